#include "platform/qt/drawing/TextLines.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "platform/qt/drawing/Strings.h"

namespace thermopix::TextLines {

namespace {

// Breaks the text into lines of at most this width; returns the height of all.
double breakLines(QTextLayout& layout, const TextStyle& style, double width, Qt::Alignment alignment) {
    QTextOption option(alignment);
    option.setWrapMode(QTextOption::WordWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    double height = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        height += height > 0 ? style.lineSpacing : 0;
        line.setPosition({0, height});
        height += std::ceil(line.height());
    }
    layout.endLayout();
    return height;
}

QString lines(std::string_view text) {
    return qtString(text).replace(u'\n', QChar::LineSeparator);
}

}  // namespace

QFont font(const TextStyle& style) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(style.points))));
    font.setWeight(style.isSemibold ? QFont::DemiBold : QFont::Normal);
    if (style.letterSpacing != 0) {
        font.setLetterSpacing(QFont::AbsoluteSpacing, style.letterSpacing);
    }
    return font;
}

Size size(std::string_view text, const TextStyle& style, Wrapping wrapping, double width) {
    const QFont shown = font(style);
    const QFontMetricsF metrics(shown);
    if (wrapping == Wrapping::oneLine) {
        return {std::ceil(metrics.horizontalAdvance(qtString(text))), std::ceil(metrics.height())};
    }
    QTextLayout layout(lines(text), shown);
    const double height = breakLines(layout, style, width, Qt::AlignLeft);
    return {std::min(width, std::ceil(layout.maximumWidth())), height};
}

void draw(QPainter& painter, const QRectF& rectangle, std::string_view text, const TextStyle& style, Wrapping wrapping,
          const QColor& color, Qt::Alignment alignment) {
    const QFont shown = font(style);
    painter.setPen(color);
    if (wrapping == Wrapping::oneLine) {
        const QFontMetricsF metrics(shown);
        painter.setFont(shown);
        painter.drawText(rectangle, static_cast<int>(alignment | Qt::AlignTop) | Qt::TextSingleLine,
                         metrics.elidedText(qtString(text), Qt::ElideRight, std::ceil(rectangle.width())));
        return;
    }
    QTextLayout layout(lines(text), shown);
    breakLines(layout, style, rectangle.width(), alignment);
    layout.draw(&painter, rectangle.topLeft());
}

}  // namespace thermopix::TextLines
