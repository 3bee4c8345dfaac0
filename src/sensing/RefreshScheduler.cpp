#include "sensing/RefreshScheduler.h"

#include <utility>

namespace thermopix {

RefreshScheduler::RefreshScheduler(MainLoop& mainLoop, SleepNotifications& sleepNotifications)
    : mainLoop_(mainLoop), sleepNotifications_(sleepNotifications) {}

RefreshScheduler::~RefreshScheduler() {
    stop();
}

void RefreshScheduler::start(RefreshInterval interval) {
    interval_ = interval;
    isRunning_ = true;
    if (observers_.empty()) {
        observeSleep();
    }
    schedule();
}

void RefreshScheduler::setInterval(RefreshInterval interval) {
    if (interval == interval_) {
        return;
    }
    interval_ = interval;
    schedule();
}

void RefreshScheduler::stop() {
    isRunning_ = false;
    timer_.cancel();
}

void RefreshScheduler::schedule() {
    if (!isRunning_ || isAsleep_) {
        return;
    }
    timer_.cancel();
    timer_ =
        mainLoop_.repeating(MainLoop::Duration::zero(), seconds(interval_), leeway(interval_), [this] { onTick(); });
}

void RefreshScheduler::suspend() {
    timer_.cancel();
    if (std::exchange(isAsleep_, true)) {
        return;
    }
    onSleep();
}

void RefreshScheduler::wake() {
    if (!isAsleep_) {
        return;
    }
    isAsleep_ = false;
    const std::weak_ptr<const Lifetime> lifetime = lifetime_;
    onWake();
    if (!lifetime.expired()) {
        schedule();
    }
}

void RefreshScheduler::observeSleep() {
    const auto observe = [this](SleepNotification notification, void (RefreshScheduler::*reaction)()) {
        observers_.push_back(sleepNotifications_.observe(notification, [this, reaction] { (this->*reaction)(); }));
    };
    observe(SleepNotification::willSleep, &RefreshScheduler::suspend);
    observe(SleepNotification::screensDidSleep, &RefreshScheduler::suspend);
    observe(SleepNotification::didWake, &RefreshScheduler::wake);
    observe(SleepNotification::screensDidWake, &RefreshScheduler::wake);
}

}  // namespace thermopix
