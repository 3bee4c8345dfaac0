#pragma once

#include "system/MonotonicClock.h"

namespace thermopix {

/// The uptime clock, on which timers run too: it stands still while the machine sleeps.
class MacMonotonicClock final : public MonotonicClock {
public:
    [[nodiscard]] std::chrono::nanoseconds now() const override;
};

}  // namespace thermopix
