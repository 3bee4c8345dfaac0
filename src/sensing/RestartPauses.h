#pragma once

#include <algorithm>
#include <chrono>

namespace thermopix {

/// When a process that failed may be started again: after a pause that doubles with each failure, and begins anew once
/// a process has lasted. All times are of one monotonic clock.
class RestartPauses {
public:
    using Time = std::chrono::nanoseconds;

    static constexpr Time shortest = std::chrono::seconds(5);
    static constexpr Time longest = std::chrono::minutes(10);
    /// A process that has run for this long did not fail at its start.
    static constexpr Time lasting = std::chrono::minutes(1);

    void started(Time now) { startedAt_ = now; }

    void failed(Time now) {
        pause_ = now - startedAt_ >= lasting ? shortest : std::clamp(2 * pause_, shortest, longest);
        until_ = now + pause_;
    }

    [[nodiscard]] bool allowStart(Time now) const { return now >= until_; }

private:
    Time startedAt_{};
    Time pause_{};
    Time until_ = Time::min();
};

}  // namespace thermopix
