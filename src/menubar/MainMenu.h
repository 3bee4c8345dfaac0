#pragma once

#include <string_view>

#include "shell/Menu.h"

/// The menu bar of the frontmost program: three items of kind `submenu`.
namespace thermopix::MainMenu {

[[nodiscard]] MenuItem appMenuItem(std::string_view applicationName);
[[nodiscard]] MenuItem editMenuItem();
/// Its menu is the one in which the system lists the open windows.
[[nodiscard]] MenuItem windowMenuItem();

}  // namespace thermopix::MainMenu
