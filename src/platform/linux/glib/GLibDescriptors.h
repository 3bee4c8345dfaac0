#pragma once

#include <functional>

#include "base/Subscription.h"

namespace thermopix {

/// Calls `handler` on the main loop as long as something can be read from a descriptor, or its other end has gone. The
/// descriptor stays the caller's, and open while it is observed. Main thread.
Subscription observeReadable(int descriptor, std::function<void()> handler);

}  // namespace thermopix
