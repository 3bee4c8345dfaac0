#pragma once

#include <cstdint>
#include <variant>

#include "base/Enumeration.h"
#include "messages/WindowProtocol.h"
#include "messages/WindowRequest.h"
#include "shell/Menu.h"
#include "shell/ViewNode.h"

/// What the window process tells the resident program.
namespace thermopix {

/// Where the status item's menu was opened.
enum class MenuPlace { popup, strip };

template <>
struct EnumerationTable<MenuPlace> : CaseNames<MenuPlace::strip> {};

/// The process is up and reads requests; its first event.
struct Hello {
    std::int32_t version = WindowProtocol::version;
};

/// The user operated a control.
struct ControlOperated {
    WindowId window = 0;
    ViewEvent event;
};

/// The window was shown, miniaturised, restored or closed. A miniaturised window is not visible.
struct WindowVisibilityChanged {
    WindowId window = 0;
    bool isVisible = false;
    bool isMiniaturized = false;
};

/// The user closes the window; `WindowVisibilityChanged` follows.
struct WindowWillClose {
    WindowId window = 0;
};

/// The menu is about to be shown.
struct MenuWillOpen {
    MenuPlace place = MenuPlace::popup;
};

/// It is gone from the screen, whether or not an item was chosen.
struct MenuDidClose {
    MenuPlace place = MenuPlace::popup;
};

/// The user chose this item of the status item's menu, as it was shown.
struct MenuItemChosen {
    MenuPlace place = MenuPlace::popup;
    MenuItem item;
};

/// The user chose an action of the menu bar that is not the windows' own: `showAboutPanel` or `terminate`.
struct MainMenuActionChosen {
    MenuAction action = MenuAction::none;
};

/// The user moved the strip.
struct StripMoved {
    ScreenPoint position;
};

/// The user opened the program again, from its entry in the taskbar.
struct Reopened {};

using WindowEvent = std::variant<Hello, ControlOperated, WindowVisibilityChanged, WindowWillClose, MenuWillOpen,
                                 MenuDidClose, MenuItemChosen, MainMenuActionChosen, StripMoved, Reopened>;

}  // namespace thermopix
