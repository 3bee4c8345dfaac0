#pragma once

#include <chrono>

namespace thermopix {

/// Time since an arbitrary start, never going back. Used for measuring; any thread.
class MonotonicClock {
public:
    virtual ~MonotonicClock() = default;
    [[nodiscard]] virtual std::chrono::nanoseconds now() const = 0;
};

}  // namespace thermopix
