#pragma once

#include <functional>
#include <memory>

#include "system/DiagnosticLog.h"
#include "system/MainLoop.h"
#include "system/UpdaterManaging.h"
#include "updates/UpdateCheck.h"
#include "updates/UpdateMemory.h"
#include "updates/UpdateNotice.h"

namespace thermopix {

/// Decides when to check for updates and what to say: every check of the user's gets an answer, the daily one speaks
/// of a new version once. One check at a time; its verdict answers all who asked meanwhile. Main thread.
class UpdateController final : public UpdaterManaging {
public:
    /// What is referred to outlives the controller.
    struct Services {
        MainLoop& mainLoop;
        PackageService& packages;
        UserNotices& notices;
        std::shared_ptr<UserDefaults> defaults;
        DiagnosticLog& log;
        std::function<UpdateMemory::Time()> wallClock;
    };

    UpdateController(const UpdateSource& source, Services services);

    [[nodiscard]] bool automaticallyChecksForUpdates() const override { return automaticallyChecks_; }
    void setAutomaticallyChecksForUpdates(bool checks) override;
    void checkForUpdates() override;

private:
    void checkIfDue();
    void startCheck();
    void conclude(const UpdateVerdict& verdict);
    void tell(const UpdateVerdict& verdict);

    UpdateOrigin origin_;
    Services services_;
    UpdateMemory memory_;
    UpdateCheck check_;
    bool automaticallyChecks_ = false;
    bool userWaits_ = false;
    Subscription looks_;
};

}  // namespace thermopix
