#pragma once

#include <QPainter>
#include <QPalette>
#include <QRectF>
#include <string_view>

#include "shell/ViewNode.h"

/// What push buttons, pickers and switches have in common.
namespace thermopix::ControlPainter {

/// The height of a control whose label is this high.
[[nodiscard]] double controlHeight(double labelHeight);

/// A raised ground with an outline of this opacity.
void drawGround(QPainter& painter, const QRectF& rectangle, double radius, const QPalette& palette, double outline);

/// The ground of a button.
void drawBezel(QPainter& painter, const QRectF& rectangle, const QPalette& palette, bool isPressed, bool showsFocus);

/// One line in the middle of the rectangle's height.
void drawLabel(QPainter& painter, const QRectF& rectangle, std::string_view text, const TextStyle& style,
               const QPalette& palette, Qt::Alignment alignment);

/// The sign of a popup: one arrow head up, one down.
void drawChevrons(QPainter& painter, QPointF center, const QColor& color);

}  // namespace thermopix::ControlPainter
