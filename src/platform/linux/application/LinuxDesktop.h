#pragma once

#include <memory>

#include "base/Published.h"
#include "platform/linux/application/LinuxApplication.h"
#include "platform/linux/application/LinuxPlatform.h"
#include "platform/linux/notifications/DesktopNotification.h"
#include "platform/linux/terminal/TerminalStatusBar.h"
#include "platform/linux/tray/TrayStatusBar.h"
#include "platform/linux/windows/ProcessWindow.h"
#include "platform/linux/windows/StatusMenuPopup.h"
#include "platform/linux/windows/StripStatusBar.h"
#include "platform/linux/windows/WindowClient.h"
#include "shell/Desktop.h"
#include "tray/PlacedStatusBar.h"
#include "tray/StatusPlace.h"

namespace thermopix {

/// A Linux session: the status item in its tray, in the strip or in the terminal, the program on its bus, the windows
/// in a process of their own. Main thread.
class LinuxDesktop final : public Desktop {
public:
    /// `platform` outlives the desktop.
    LinuxDesktop(LinuxPlatform& platform, Arguments arguments, const EnvironmentVariables& variables);

    [[nodiscard]] Application& application() override { return application_; }
    [[nodiscard]] StatusBar& statusBar() override;
    [[nodiscard]] WindowSystem& windows() override { return windows_; }
    [[nodiscard]] int run(ApplicationDelegate& delegate) override;

private:
    void makeTray();
    void reopen(ApplicationDelegate& delegate);

    LinuxPlatform& platform_;
    GDBusConnection* sessionBus_;
    DesktopNotification notification_;
    WindowClient windowClient_;
    WindowClient stripClient_;
    Subscription windowsEnd_;
    Subscription stripEnd_;
    LinuxApplication application_;
    ProcessWindowSystem windows_;
    StatusMenuPopup popup_;
    StripStatusBar strip_;
    /// Where there is a bus.
    std::unique_ptr<TrayStatusBar> tray_;
    Published<StatusPlaceOffer> offer_{StatusPlaceOffer{}};
    Subscription presence_;
    TerminalStatusBar terminal_;
    /// Where there is a bus and the item is not in the terminal for good.
    std::unique_ptr<PlacedStatusBar> placed_;
};

}  // namespace thermopix
