#pragma once

#include "system/DiagnosticLog.h"
#include "system/UpdaterManaging.h"

namespace thermopix {

/// Where this build has no way to update itself: keeps the setting and answers a check with one line in the log.
class UnavailableUpdater final : public UpdaterManaging {
public:
    /// `log` outlives the updater.
    explicit UnavailableUpdater(DiagnosticLog& log) : log_(log) {}

    [[nodiscard]] bool automaticallyChecksForUpdates() const override { return automaticallyChecks_; }
    void setAutomaticallyChecksForUpdates(bool checks) override { automaticallyChecks_ = checks; }
    void checkForUpdates() override;

private:
    DiagnosticLog& log_;
    bool automaticallyChecks_ = false;
};

}  // namespace thermopix
