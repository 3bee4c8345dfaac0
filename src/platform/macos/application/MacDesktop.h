#pragma once

#include "platform/macos/application/MacApplication.h"
#include "platform/macos/menubar/MacStatusBar.h"
#include "platform/macos/settings/MacWindowSystem.h"
#include "shell/Desktop.h"

namespace thermopix {

/// The menu bar, the Dock and the windows of a Mac. Main thread.
class MacDesktop final : public Desktop {
public:
    /// `mainLoop` outlives the desktop.
    explicit MacDesktop(MainLoop& mainLoop) : windows_(mainLoop) {}

    [[nodiscard]] Application& application() override { return application_; }
    [[nodiscard]] StatusBar& statusBar() override { return statusBar_; }
    [[nodiscard]] WindowSystem& windows() override { return windows_; }
    [[nodiscard]] int run(ApplicationDelegate& delegate) override;

private:
    MacApplication application_;
    MacStatusBar statusBar_;
    MacWindowSystem windows_;
};

}  // namespace thermopix
