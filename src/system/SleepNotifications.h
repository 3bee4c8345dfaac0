#pragma once

#include <functional>

#include "base/Subscription.h"

namespace thermopix {

enum class SleepNotification { willSleep, screensDidSleep, didWake, screensDidWake };

/// Sleep and wake of the machine and of its displays, delivered on the main thread. Where the system tells nothing,
/// handlers are simply never called.
class SleepNotifications {
public:
    virtual ~SleepNotifications() = default;
    virtual Subscription observe(SleepNotification notification, std::function<void()> handler) = 0;
};

}  // namespace thermopix
