#pragma once

#include <gio/gio.h>

#include <memory>

#include "platform/linux/updates/DesktopNotices.h"
#include "platform/linux/updates/UpdateCheckProcess.h"
#include "platform/linux/updates/UpdateSource.h"
#include "system/DiagnosticLog.h"
#include "system/MainLoop.h"
#include "system/SystemInformation.h"
#include "system/UpdaterManaging.h"
#include "system/UserDefaults.h"
#include "updates/UpdateController.h"

namespace thermopix {

/// Updates on Linux: a program of its own looks at the feed, the desktop's notifications tell what it found, and the
/// release's page opens in the browser. Installs nothing. Main thread.
class LinuxUpdater final : public UpdaterManaging {
public:
    /// What is referred to outlives the updater; `sessionBus` may be null, then answers go to the log.
    struct Services {
        MainLoop& mainLoop;
        std::shared_ptr<UserDefaults> defaults;
        DiagnosticLog& log;
        const SystemInformation& system;
        GDBusConnection* sessionBus;
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
    UpdateCheckProcess checking_;
    DesktopNotices notices_;
    UpdateController controller_;
};

}  // namespace thermopix
