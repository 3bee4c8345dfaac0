#include "menubar/MainMenu.h"

#include <fmt/format.h>

#include <utility>

#include "menubar/MenuItems.h"

namespace thermopix::MainMenu {

using MenuItems::action;
using MenuItems::separator;
using MenuItems::submenu;

MenuItem appMenuItem(std::string_view applicationName) {
    Menu menu;
    menu.items = {
        action(MenuItems::aboutTitle(applicationName), MenuAction::showAboutPanel),
        separator(),
        action(fmt::format("Hide {}", applicationName), MenuAction::hide, "h"),
        action("Hide Others", MenuAction::hideOtherApplications, "h", KeyModifiers::commandOption),
        action("Show All", MenuAction::unhideAllApplications),
        separator(),
        action(MenuItems::quitTitle(applicationName), MenuAction::terminate, "q"),
    };
    return submenu(std::move(menu));
}

MenuItem editMenuItem() {
    Menu menu;
    menu.title = "Edit";
    menu.items = {
        action("Undo", MenuAction::undo, "z"),
        action("Redo", MenuAction::redo, "z", KeyModifiers::commandShift),
        separator(),
        action("Cut", MenuAction::cut, "x"),
        action("Copy", MenuAction::copy, "c"),
        action("Paste", MenuAction::paste, "v"),
        action("Select All", MenuAction::selectAll, "a"),
    };
    return submenu(std::move(menu));
}

MenuItem windowMenuItem() {
    Menu menu;
    menu.title = "Window";
    menu.listsWindows = true;
    menu.items = {
        action("Close", MenuAction::performClose, "w"),
        action("Minimize", MenuAction::performMiniaturize, "m"),
        separator(),
        action("Bring All to Front", MenuAction::arrangeInFront),
    };
    return submenu(std::move(menu));
}

}  // namespace thermopix::MainMenu
