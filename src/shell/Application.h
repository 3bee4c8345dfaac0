#pragma once

#include "base/Enumeration.h"
#include "shell/AboutPanelContent.h"
#include "shell/Menu.h"

namespace thermopix {

/// Whether the program stands among the desktop's ordinary applications (Dock, taskbar, switcher) or only in the
/// status bar.
enum class ActivationPolicy { regular, accessory };

template <>
struct EnumerationTable<ActivationPolicy> : CaseNames<ActivationPolicy::accessory> {};

/// What the desktop tells the program. Main thread.
class ApplicationDelegate {
public:
    virtual ~ApplicationDelegate() = default;

    virtual void applicationDidFinishLaunching() = 0;

    /// The user opened the running program again; true lets the system proceed.
    virtual bool applicationShouldHandleReopen(bool hasVisibleWindows) = 0;

    /// The user asked for the About panel in the menu bar.
    virtual void showAboutPanel() = 0;
};

/// The running program as its desktop sees it. Main thread.
class Application {
public:
    virtual ~Application() = default;

    /// Whether another process of the same program is running on this desktop; false where that cannot be told.
    [[nodiscard]] virtual bool hasOtherRunningInstance() = 0;

    /// Brings that other process forward; false when it turned out to be no such process.
    [[nodiscard]] virtual bool activateOtherRunningInstance() = 0;

    /// Ends the program in good order after the current callback.
    virtual void terminate() = 0;

    /// Comes to the front, ignoring other applications.
    virtual void activateIgnoringOtherApps() = 0;

    [[nodiscard]] virtual ActivationPolicy activationPolicy() const = 0;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;

    /// The menus of the menu bar, each an item of kind `submenu`.
    virtual void setMainMenu(const Menu& menu) = 0;

    /// Shows the one About panel, or brings it forward.
    virtual void showAboutPanel(const AboutPanelContent& content) = 0;
};

}  // namespace thermopix
