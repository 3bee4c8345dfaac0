#pragma once

#include <string>
#include <string_view>

#include "shell/Menu.h"

/// The items that menus are built of.
namespace thermopix::MenuItems {

[[nodiscard]] MenuItem action(std::string title, MenuAction action, std::string key = {},
                              KeyModifiers modifiers = KeyModifiers::command);

/// A line that says something and cannot be chosen.
[[nodiscard]] MenuItem information(std::string title, MenuTextStyle style);

[[nodiscard]] MenuItem sectionHeader(std::string title);

[[nodiscard]] MenuItem separator();

/// Bears its menu's title.
[[nodiscard]] MenuItem submenu(Menu menu);

/// Titles that more than one menu has.
[[nodiscard]] std::string aboutTitle(std::string_view applicationName);
[[nodiscard]] std::string quitTitle(std::string_view applicationName);

}  // namespace thermopix::MenuItems
