#pragma once

#include <memory>
#include <vector>

#include "base/Callback.h"
#include "base/Subscription.h"
#include "sensing/RefreshInterval.h"
#include "system/MainLoop.h"
#include "system/SleepNotifications.h"

namespace thermopix {

/// The heartbeat of the readout: ticks at once and then at the interval, rests while the machine or its displays
/// sleep, and on wake calls `onWake` before the first new tick. Main thread.
class RefreshScheduler {
public:
    /// Both outlive the scheduler.
    RefreshScheduler(MainLoop& mainLoop, SleepNotifications& sleepNotifications);
    RefreshScheduler(const RefreshScheduler&) = delete;
    RefreshScheduler& operator=(const RefreshScheduler&) = delete;
    ~RefreshScheduler();

    void start(RefreshInterval interval);
    /// A new interval ticks at once; the one in use changes nothing.
    void setInterval(RefreshInterval interval);
    void stop();

    [[nodiscard]] RefreshInterval interval() const { return interval_; }
    [[nodiscard]] bool isRunning() const { return isRunning_; }
    [[nodiscard]] bool isAsleep() const { return isAsleep_; }

    /// The callbacks set last are the ones called; each may replace any or destroy the scheduler.
    Callback onTick;
    Callback onWake;
    /// Called when a sleep begins, so that other timers can rest too.
    Callback onSleep;

private:
    struct Lifetime {};

    /// Starts the timer anew, unless stopped or asleep.
    void schedule();
    void suspend();
    void wake();
    void observeSleep();

    MainLoop& mainLoop_;
    SleepNotifications& sleepNotifications_;
    Subscription timer_;
    std::vector<Subscription> observers_;
    RefreshInterval interval_ = RefreshInterval::twoSeconds;
    bool isRunning_ = false;
    bool isAsleep_ = false;
    /// Gone when the scheduler is.
    std::shared_ptr<const Lifetime> lifetime_ = std::make_shared<Lifetime>();
};

}  // namespace thermopix
