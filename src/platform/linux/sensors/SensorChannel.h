#pragma once

#include <optional>

namespace thermopix {

/// One temperature of the machine, read on demand; main thread.
class SensorChannel {
public:
    virtual ~SensorChannel() = default;

    /// Degrees Celsius now; none when the sensor fails, reports a fault, or its device sleeps.
    [[nodiscard]] virtual std::optional<double> read() = 0;
};

}  // namespace thermopix
