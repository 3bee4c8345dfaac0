#include "menubar/MenuItems.h"

#include <fmt/format.h>

#include <utility>

namespace thermopix::MenuItems {

namespace {

MenuItem item(MenuItemKind kind, std::string title) {
    MenuItem made;
    made.kind = kind;
    made.title = std::move(title);
    return made;
}

}  // namespace

MenuItem action(std::string title, MenuAction action, std::string key, KeyModifiers modifiers) {
    auto made = item(MenuItemKind::action, std::move(title));
    made.action = action;
    made.key = std::move(key);
    made.modifiers = modifiers;
    return made;
}

MenuItem information(std::string title, MenuTextStyle style) {
    auto made = item(MenuItemKind::information, std::move(title));
    made.textStyle = style;
    made.isEnabled = false;
    return made;
}

MenuItem sectionHeader(std::string title) {
    auto made = item(MenuItemKind::sectionHeader, std::move(title));
    made.isEnabled = false;
    return made;
}

MenuItem separator() {
    return item(MenuItemKind::separator, {});
}

MenuItem submenu(Menu menu) {
    auto made = item(MenuItemKind::submenu, menu.title);
    made.submenu = std::move(menu);
    return made;
}

std::string aboutTitle(std::string_view applicationName) {
    return fmt::format("About {}", applicationName);
}

std::string quitTitle(std::string_view applicationName) {
    return fmt::format("Quit {}", applicationName);
}

}  // namespace thermopix::MenuItems
