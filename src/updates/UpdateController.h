#pragma once

#include <functional>
#include <memory>
#include <string>

#include "system/DiagnosticLog.h"
#include "system/MainLoop.h"
#include "system/UpdaterManaging.h"
#include "updates/UpdateChecking.h"
#include "updates/UpdateMemory.h"
#include "updates/UserNotices.h"

namespace thermopix {

/// Decides when to check for updates and what to say: every check of the user's gets an answer, the daily one speaks
/// of a new version once. One check at a time; its verdict answers all who asked meanwhile. Main thread.
class UpdateController final : public UpdaterManaging {
public:
    /// What is referred to outlives the controller.
    struct Services {
        MainLoop& mainLoop;
        UpdateChecking& checking;
        UserNotices& notices;
        std::shared_ptr<UserDefaults> defaults;
        DiagnosticLog& log;
        std::function<UpdateMemory::Time()> wallClock;
    };

    UpdateController(UpdateOrigin origin, std::string ownVersion, Services services);

    [[nodiscard]] bool automaticallyChecksForUpdates() const override { return automaticallyChecks_; }
    void setAutomaticallyChecksForUpdates(bool checks) override;
    void checkForUpdates() override;

private:
    [[nodiscard]] bool isCheckDue() const;
    void startCheck();
    void conclude(const UpdateVerdict& verdict);
    void announce(const UpdateAvailable& update);
    void answer(const UpdateNotice& notice);

    UpdateOrigin origin_;
    std::string ownVersion_;
    Services services_;
    UpdateMemory memory_;
    bool automaticallyChecks_ = false;
    bool userWaits_ = false;
    Subscription looks_;
    Subscription check_;
};

}  // namespace thermopix
