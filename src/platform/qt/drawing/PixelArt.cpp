#include "platform/qt/drawing/PixelArt.h"

#include <algorithm>
#include <cmath>

namespace thermopix::PixelArt {

namespace {

// A width of nearly nine pixels is nine: scales are seldom exact.
constexpr double tolerance = 0.01;

StatusImage atScale(StatusImage image, double scale) {
    const double pixels = std::max(1.0, std::floor(image.cell * scale + tolerance));
    image.inset *= pixels / image.cell;
    image.cell = pixels;
    return image;
}

}  // namespace

QImage toQImage(const RgbaImage& image) {
    static_assert(sizeof(RgbaColor) == 4);
    const auto* bytes = reinterpret_cast<const uchar*>(image.pixels.data());
    return QImage(bytes, static_cast<int>(image.width), static_cast<int>(image.height), QImage::Format_RGBA8888)
        .convertToFormat(QImage::Format_ARGB32);
}

void draw(QPainter& painter, const QRectF& rectangle, const StatusImage& image, const QColor& color) {
    if (image.isBlank()) {
        return;
    }
    // The world transform is replaced by one under which a unit is a device pixel.
    const QTransform toDevice = painter.deviceTransform();
    const QTransform viewToDevice = painter.worldTransform().inverted() * toDevice;
    const QRectF device = toDevice.mapRect(rectangle);
    const StatusImage drawn = atScale(image, toDevice.m11());
    QImage picture = toQImage(rasterize(drawn, 1, DotPlacement::onPoints));
    QPainter tint(&picture);
    tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
    tint.fillRect(picture.rect(), color);
    tint.end();

    painter.save();
    painter.setWorldTransform(viewToDevice.inverted());
    painter.drawImage(QPointF(std::round(device.left() + (device.width() - picture.width()) / 2),
                              std::round(device.top() + (device.height() - picture.height()) / 2)),
                      picture);
    painter.restore();
}

}  // namespace thermopix::PixelArt
