#include "platform/qt/drawing/ControlPainter.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/qt/drawing/RoleColors.h"
#include "platform/qt/drawing/TextLines.h"
#include "platform/qt/drawing/ViewPainter.h"

namespace thermopix::ControlPainter {

namespace {

constexpr double cornerRadius = 6;
constexpr double minimumHeight = 24;
constexpr double labelPadding = 4;
constexpr double outlineOpacity = 0.16;
constexpr double pressedOpacity = 0.1;

}  // namespace

double controlHeight(double labelHeight) {
    return std::max(minimumHeight, labelHeight + 2 * labelPadding);
}

void drawGround(QPainter& painter, const QRectF& rectangle, double radius, const QPalette& palette, double outline) {
    const double line = 1 / painter.deviceTransform().m11();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(RoleColors::faded(ColorRole::primary, outline, palette), line));
    painter.setBrush(RoleColors::button(palette));
    painter.drawRoundedRect(rectangle.adjusted(line / 2, line / 2, -line / 2, -line / 2), radius, radius);
    painter.restore();
}

void drawBezel(QPainter& painter, const QRectF& rectangle, const QPalette& palette, bool isPressed, bool showsFocus) {
    drawGround(painter, rectangle, cornerRadius, palette, outlineOpacity);
    if (isPressed) {
        const double line = 1 / painter.deviceTransform().m11();
        ViewPainter::fillRounded(painter, rectangle.adjusted(line / 2, line / 2, -line / 2, -line / 2), cornerRadius,
                                 RoleColors::faded(ColorRole::primary, pressedOpacity, palette));
    }
    if (showsFocus) {
        ViewPainter::drawFocusRing(painter, rectangle, cornerRadius, palette);
    }
}

void drawLabel(QPainter& painter, const QRectF& rectangle, std::string_view text, const TextStyle& style,
               const QPalette& palette, Qt::Alignment alignment) {
    const double height = TextLines::size(text, style).height;
    const QRectF line(rectangle.left(), rectangle.top() + std::floor((rectangle.height() - height) / 2),
                      rectangle.width(), height);
    TextLines::draw(painter, line, text, style, TextLines::Wrapping::oneLine,
                    RoleColors::color(ColorRole::primary, palette), alignment);
}

void drawChevrons(QPainter& painter, QPointF center, const QColor& color) {
    constexpr double reach = 3;
    constexpr double gap = 2;
    constexpr double rise = 3;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    for (const double direction : {-1.0, 1.0}) {
        const std::array<QPointF, 3> corners{center + QPointF(-reach, direction * gap),
                                             center + QPointF(0, direction * (gap + rise)),
                                             center + QPointF(reach, direction * gap)};
        painter.drawPolyline(corners.data(), static_cast<int>(corners.size()));
    }
    painter.restore();
}

}  // namespace thermopix::ControlPainter
