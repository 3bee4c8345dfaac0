#pragma once

#include <chrono>

#include "system/MonotonicClock.h"

namespace thermopix {

class LinuxMonotonicClock final : public MonotonicClock {
public:
    [[nodiscard]] std::chrono::nanoseconds now() const override {
        return std::chrono::steady_clock::now().time_since_epoch();
    }
};

}  // namespace thermopix
