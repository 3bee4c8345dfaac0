#pragma once

#include <chrono>
#include <functional>
#include <utility>

#include "base/Subscription.h"

namespace thermopix {

/// The main thread's event loop as timers and deferred work; main thread only. Each returned subscription owns its
/// work: dropping it cancels what has not run yet, also from inside the work itself.
class MainLoop {
public:
    using Duration = std::chrono::nanoseconds;
    using Work = std::function<void()>;

    virtual ~MainLoop() = default;

    /// Runs `work` once, `delay` from now.
    virtual Subscription oneShot(Duration delay, Work work) = 0;

    /// Runs `work` in a later turn of the loop, in the order of posting.
    Subscription post(Work work) { return oneShot(Duration::zero(), std::move(work)); }

    /// Runs `work` `first` from now and then every `period`, without drift. Each firing may be late by up to
    /// `leeway`, so that expirations can share a wake-up; it is never early.
    virtual Subscription repeating(Duration first, Duration period, Duration leeway, Work work) = 0;

    [[nodiscard]] virtual Duration now() const = 0;
};

}  // namespace thermopix
