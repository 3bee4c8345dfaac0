#pragma once

#include <cstdint>

#include "system/UpdaterManaging.h"

namespace thermopix {

/// Stores and counts, for automated interface tests.
class FakeUpdater final : public UpdaterManaging {
public:
    [[nodiscard]] bool automaticallyChecksForUpdates() const override { return automaticallyChecks; }
    void setAutomaticallyChecksForUpdates(bool checks) override { automaticallyChecks = checks; }
    void checkForUpdates() override { ++checkForUpdatesCallCount; }

    bool automaticallyChecks = false;
    std::int64_t checkForUpdatesCallCount = 0;
};

}  // namespace thermopix
