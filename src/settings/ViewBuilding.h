#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "shell/ViewNode.h"

/// Short forms for the nodes that panes are built of.
namespace thermopix::Views {

[[nodiscard]] ViewNode vertical(double spacing, std::vector<ViewNode> children);

/// Children centred on the stack's axis.
[[nodiscard]] ViewNode horizontal(double spacing, std::vector<ViewNode> children);

/// One line in the system font.
[[nodiscard]] ViewNode text(std::string_view text, double points, ColorRole role = ColorRole::primary);

[[nodiscard]] ViewNode symbol(std::string_view name, double points, ColorRole role);
[[nodiscard]] ViewNode pixelImage(StatusImage image, Color color);
[[nodiscard]] ViewNode spacer();
[[nodiscard]] ViewNode divider();
[[nodiscard]] ViewNode toggle(std::string_view title, std::string_view identifier, bool isOn);
[[nodiscard]] ViewNode pushButton(std::string_view title, std::string_view identifier);

}  // namespace thermopix::Views
