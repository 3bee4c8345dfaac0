#pragma once

#include <QPainter>
#include <QPalette>
#include <QSizeF>

#include "shell/ViewLayout.h"
#include "shell/ViewNode.h"

/// Draws views that take no part in the conversation: texts, symbols, pictures and their grounds.
namespace thermopix::ViewPainter {

enum class Pointer { away, over, pressing };

/// The node's ground, at the origin.
void drawBackground(QPainter& painter, const ViewNode& node, QSizeF size, const QPalette& palette, Pointer pointer);

/// The node with its ground and all that is in it, at the origin; `measure` sizes its leaves. Controls inside it are
/// not drawn.
void draw(QPainter& painter, const ViewNode& node, QSizeF size, const QPalette& palette, Pointer pointer,
          MeasureLeaf measure);

void fillRounded(QPainter& painter, const QRectF& rectangle, double cornerRadius, const QBrush& brush);

/// The ring around what has the keyboard, just inside the rectangle.
void drawFocusRing(QPainter& painter, const QRectF& rectangle, double cornerRadius, const QPalette& palette,
                   ColorRole role = ColorRole::accent, double opacity = 0.75);

}  // namespace thermopix::ViewPainter
