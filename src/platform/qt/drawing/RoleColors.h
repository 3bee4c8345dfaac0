#pragma once

#include <QColor>
#include <QPalette>

#include "shell/ViewNode.h"

/// What the colours of views are on a palette, light or dark.
namespace thermopix::RoleColors {

[[nodiscard]] bool isDark(const QPalette& palette);
[[nodiscard]] QColor color(ColorRole role, const QPalette& palette);
[[nodiscard]] QColor color(const RoleColor& color, const QPalette& palette);
[[nodiscard]] QColor color(const Color& color, const QPalette& palette);
[[nodiscard]] QColor color(RgbaColor color);

/// The role's colour with its opacity reduced to this share.
[[nodiscard]] QColor faded(ColorRole role, double opacity, const QPalette& palette);

/// The ground of push buttons and of popup pickers.
[[nodiscard]] QColor button(const QPalette& palette);

}  // namespace thermopix::RoleColors
