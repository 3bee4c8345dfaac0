#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QRectF>
#include <string_view>

#include "shell/ViewLayout.h"
#include "shell/ViewNode.h"

/// Text in the system font at the sizes of the views: measured and drawn by the same rules.
namespace thermopix::TextLines {

enum class Wrapping { oneLine, asNeeded };

[[nodiscard]] QFont font(const TextStyle& style);

/// Rounded up to whole points; `width` is where lines are wrapped.
[[nodiscard]] Size size(std::string_view text, const TextStyle& style, Wrapping wrapping = Wrapping::oneLine,
                        double width = 0);

/// Draws from the rectangle's top. A line that does not wrap ends in an ellipsis where the rectangle does.
void draw(QPainter& painter, const QRectF& rectangle, std::string_view text, const TextStyle& style, Wrapping wrapping,
          const QColor& color, Qt::Alignment alignment = Qt::AlignLeft);

}  // namespace thermopix::TextLines
