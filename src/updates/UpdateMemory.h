#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "system/UserDefaults.h"

namespace thermopix {

/// What is remembered of past checks, across restarts; what cannot be stored is remembered until the end of the
/// process. Main thread.
class UpdateMemory {
public:
    /// A time of the wall clock.
    using Time = std::chrono::sys_seconds;

    /// Reads at once, so that no disk is waited for later.
    explicit UpdateMemory(std::shared_ptr<UserDefaults> defaults);

    /// When a check last got an answer; none before the first.
    [[nodiscard]] std::optional<Time> lastCheck() const { return lastCheck_; }
    void setLastCheck(Time time);

    /// The version that the user was told about last; empty before the first.
    [[nodiscard]] const std::string& announcedVersion() const { return announcedVersion_; }
    void setAnnouncedVersion(const std::string& version);

private:
    std::shared_ptr<UserDefaults> defaults_;
    std::optional<Time> lastCheck_;
    std::string announcedVersion_;
};

}  // namespace thermopix
