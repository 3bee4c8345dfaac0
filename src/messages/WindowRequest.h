#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "pixels/StatusImage.h"
#include "shell/AboutPanelContent.h"
#include "shell/Application.h"
#include "shell/Menu.h"
#include "shell/ViewNode.h"
#include "shell/Window.h"

/// What the resident program asks of the window process.
namespace thermopix {

/// Names a window to both sides; given by the resident program and never used twice.
using WindowId = std::uint32_t;

/// The About panel's place among the windows.
inline constexpr WindowId aboutPanelWindow = 0;

/// In the desktop's logical pixels, origin top left.
struct ScreenPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
};

/// Shows the window, which is made first if it is new; a miniaturised one is restored.
struct ShowWindow {
    WindowId window = 0;
    WindowDescription description;
};

/// The tree that the window shows; comes before or after `ShowWindow`.
struct SetWindowContent {
    WindowId window = 0;
    ViewNode root;
};

/// Makes a shown window the active one, in front of the others.
struct OrderWindowFront {
    WindowId window = 0;
};

/// The window is not needed any more; takes it from the screen without a word.
struct DiscardWindow {
    WindowId window = 0;
};

/// The menu bar of every window.
struct SetMainMenu {
    Menu menu;
};

/// Whether windows stand in the desktop's taskbar and switcher.
struct SetActivationPolicy {
    ActivationPolicy policy = ActivationPolicy::accessory;
};

/// Shows the one About panel, or brings it forward. Its events bear `aboutPanelWindow`.
struct ShowAboutPanel {
    AboutPanelContent content;
};

/// The next window that comes to the front does so with this token (XDG activation, startup notification).
struct UseActivationToken {
    std::string token;
};

/// Opens the status item's menu on its own, under the pointer unless told where; a menu that is open is replaced.
struct OpenPopupMenu {
    Menu menu;
    std::optional<ScreenPoint> position;
};

/// The popup's menu has changed; ignored when none is open.
struct UpdatePopupMenu {
    Menu menu;
};

/// What the strip shows, and says by the description.
struct SetStripReadout {
    StatusImage image;
    /// For the tool tip, below the description.
    std::string note{};
};

/// The menu behind a click on the strip.
struct SetStripMenu {
    Menu menu;
};

/// Shows the strip: a small window that stays above the others. Without a position, at the platform's own place.
struct ShowStrip {
    std::optional<ScreenPoint> position;
};

struct HideStrip {};

using WindowRequest = std::variant<ShowWindow, SetWindowContent, OrderWindowFront, DiscardWindow, SetMainMenu,
                                   SetActivationPolicy, ShowAboutPanel, UseActivationToken, OpenPopupMenu,
                                   UpdatePopupMenu, SetStripReadout, SetStripMenu, ShowStrip, HideStrip>;

}  // namespace thermopix
