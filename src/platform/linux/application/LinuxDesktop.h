#pragma once

#include <memory>

#include "app/Desktop.h"
#include "platform/linux/application/LinuxApplication.h"
#include "platform/linux/application/LinuxPlatform.h"
#include "platform/linux/terminal/TerminalStatusBar.h"
#include "platform/linux/tray/TrayStatusBar.h"
#include "settings/UnavailableWindows.h"

namespace thermopix {

/// A Linux session: the status item in its tray or in the terminal, the program on its bus. Main thread.
class LinuxDesktop final : public Desktop {
public:
    /// `platform` outlives the desktop.
    LinuxDesktop(LinuxPlatform& platform, Arguments arguments, const EnvironmentVariables& variables);

    [[nodiscard]] Application& application() override { return application_; }
    [[nodiscard]] StatusBar& statusBar() override;
    [[nodiscard]] WindowSystem& windows() override { return windows_; }
    [[nodiscard]] int run(ApplicationDelegate& delegate) override;

private:
    LinuxPlatform& platform_;
    GDBusConnection* sessionBus_;
    LinuxApplication application_;
    UnavailableWindows windows_;
    /// Exactly one of them is there.
    std::unique_ptr<TrayStatusBar> tray_;
    std::unique_ptr<TerminalStatusBar> terminal_;
};

}  // namespace thermopix
