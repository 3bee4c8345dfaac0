#pragma once

#include <string>
#include <vector>

#include "system/MainLoop.h"
#include "updates/UpdateChecking.h"

namespace thermopix {

/// A check by the program that fetches and judges the feed, which runs for that time only. A program that is missing,
/// says something else or does not end is a failed check. Main thread.
class UpdateCheckProcess final : public UpdateChecking {
public:
    /// Why the program may take longer than its own bounds: a machine that is busy or falls asleep.
    static constexpr MainLoop::Duration defaultPatience = std::chrono::seconds(90);

    /// The first word of `command` is the program's path. `mainLoop` outlives the checks.
    UpdateCheckProcess(MainLoop& mainLoop, std::vector<std::string> command,
                       MainLoop::Duration patience = defaultPatience)
        : mainLoop_(mainLoop), command_(std::move(command)), patience_(patience) {}

    Subscription check(std::function<void(const UpdateVerdict&)> concluded) override;

private:
    MainLoop& mainLoop_;
    std::vector<std::string> command_;
    MainLoop::Duration patience_;
};

}  // namespace thermopix
