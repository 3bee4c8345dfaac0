#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QRectF>

#include "pixels/Rgba.h"
#include "pixels/StatusImage.h"

/// Pixel art on whole device pixels, drawn from its recipe at the device's own resolution.
namespace thermopix::PixelArt {

/// The image tinted with the colour, in the middle of the rectangle. Where the device's scale gives no whole number of
/// pixels to a cell, cells are the next smaller whole number.
void draw(QPainter& painter, const QRectF& rectangle, const StatusImage& image, const QColor& color);

[[nodiscard]] QImage toQImage(const RgbaImage& image);

}  // namespace thermopix::PixelArt
