#pragma once

#include <string_view>

#include "settings/Pane.h"
#include "shell/ViewNode.h"

namespace thermopix {

inline constexpr double sidebarWidth = 180;

/// One row per pane, below the title bar, and the version at the bottom.
[[nodiscard]] ViewNode settingsSidebar(Pane selection, std::string_view shortVersion, double titleBarHeight);

[[nodiscard]] ViewNode sidebarRow(Pane pane, Pane selection);

}  // namespace thermopix
