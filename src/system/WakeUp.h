#pragma once

#include <functional>

#include "base/Subscription.h"

namespace thermopix {

/// How another thread has something done on the main thread.
struct WakeUp {
    /// Any thread; soon after it the work runs, once for however many calls there were. Does nothing after the end.
    std::function<void()> raise;
    /// Main thread.
    Subscription registration;
};

/// Makes the wake-up of some work. Main thread.
using WakeUpMaker = std::function<WakeUp(std::function<void()> work)>;

}  // namespace thermopix
