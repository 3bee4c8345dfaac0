#include "platform/qt/drawing/Symbols.h"

#include <QFile>
#include <QImage>
#include <QSvgRenderer>
#include <cmath>

#include "platform/qt/drawing/Strings.h"

// The resource is part of a library, which leaves its start to those who use it.
static void useSymbols() {
    Q_INIT_RESOURCE(symbols);
}

namespace thermopix::Symbols {

double side(double points) {
    return std::ceil(points * 1.2);
}

void draw(QPainter& painter, const QRectF& rectangle, std::string_view name, const QColor& color) {
    static const bool isInUse = (useSymbols(), true);
    const QString path = QStringLiteral(":/thermopix/symbols/%1.svg").arg(qtString(name));
    if (!isInUse || !QFile::exists(path)) {
        return;
    }
    const double scale = painter.deviceTransform().m11();
    QImage mask((rectangle.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    mask.fill(Qt::transparent);
    QPainter draft(&mask);
    QSvgRenderer(path).render(&draft);
    draft.setCompositionMode(QPainter::CompositionMode_SourceIn);
    draft.fillRect(mask.rect(), color);
    draft.end();
    mask.setDevicePixelRatio(scale);
    painter.drawImage(rectangle.topLeft(), mask);
}

}  // namespace thermopix::Symbols
