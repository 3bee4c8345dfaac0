#pragma once

#include <gio/gio.h>

#include <memory>
#include <string>

#include "platform/linux/notifications/DesktopNotification.h"
#include "platform/linux/updates/PackageKitService.h"
#include "system/DiagnosticLog.h"
#include "system/MainLoop.h"
#include "system/UpdaterManaging.h"
#include "system/UserDefaults.h"
#include "updates/UpdateController.h"

namespace thermopix {

/// The package that this build is made for; empty for none.
[[nodiscard]] std::string packageOfThisBuild();

/// A Flatpak's new versions come with Flatpak, whatever package its parts were built for.
[[nodiscard]] UpdateSource updateSource(const std::string& package, const std::string& flatpakInformation);

/// Updates on Linux: the package service tells of new versions, the desktop's notifications tell the user, and the
/// desktop's software centre shows them. Installs nothing. Main thread.
class LinuxUpdater final : public UpdaterManaging {
public:
    /// What is referred to outlives the updater; both buses may be null.
    struct Services {
        MainLoop& mainLoop;
        std::shared_ptr<UserDefaults> defaults;
        DiagnosticLog& log;
        GDBusConnection* sessionBus;
        GDBusConnection* systemBus;
    };

    LinuxUpdater(const UpdateSource& source, const Services& services);

    [[nodiscard]] bool automaticallyChecksForUpdates() const override {
        return controller_.automaticallyChecksForUpdates();
    }
    void setAutomaticallyChecksForUpdates(bool checks) override {
        controller_.setAutomaticallyChecksForUpdates(checks);
    }
    void checkForUpdates() override { controller_.checkForUpdates(); }

private:
    PackageKitService packages_;
    DesktopNotification notification_;
    UpdateController controller_;
};

}  // namespace thermopix
