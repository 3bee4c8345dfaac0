#pragma once

#include <functional>

#include "base/Subscription.h"
#include "updates/UpdateVerdict.h"

namespace thermopix {

/// Looks at the feed once. Main thread.
class UpdateChecking {
public:
    virtual ~UpdateChecking() = default;

    /// Calls `concluded` once, later; dropping the handle ends the check without a verdict.
    virtual Subscription check(std::function<void(const UpdateVerdict&)> concluded) = 0;
};

}  // namespace thermopix
