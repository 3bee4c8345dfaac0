#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>
#include <string_view>

/// The symbols that views and menus name, as line drawings in one colour.
namespace thermopix::Symbols {

/// The side of the square that a symbol takes beside text of this size.
[[nodiscard]] double side(double points);

/// Drawn at the device's resolution; nothing for a name that has no symbol.
void draw(QPainter& painter, const QRectF& rectangle, std::string_view name, const QColor& color);

}  // namespace thermopix::Symbols
