#pragma once

#include <memory>

#include "app/Desktop.h"
#include "platform/linux/application/LinuxApplication.h"
#include "platform/linux/application/LinuxPlatform.h"
#include "settings/UnavailableWindows.h"

namespace thermopix {

/// A Linux session: the status item in the terminal, the program on its bus. Main thread.
class LinuxDesktop final : public Desktop {
public:
    /// `platform` outlives the desktop.
    LinuxDesktop(LinuxPlatform& platform, Arguments arguments, const EnvironmentVariables& variables);

    [[nodiscard]] Application& application() override { return application_; }
    [[nodiscard]] StatusBar& statusBar() override { return *statusBar_; }
    [[nodiscard]] WindowSystem& windows() override { return windows_; }
    [[nodiscard]] int run(ApplicationDelegate& delegate) override;

private:
    void makeStatusBar(const EnvironmentVariables& variables);

    LinuxPlatform& platform_;
    GDBusConnection* sessionBus_;
    LinuxApplication application_;
    UnavailableWindows windows_;
    std::unique_ptr<StatusBar> statusBar_;
};

}  // namespace thermopix
