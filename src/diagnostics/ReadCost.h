#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string>

#include "base/FunctionView.h"
#include "sensing/HIDTemperatureSensor.h"
#include "sensing/SensorSource.h"
#include "system/MonotonicClock.h"

namespace thermopix {

/// Milliseconds of the fastest of `repetitions` runs of `work`, after one run that is not timed; infinite for none.
[[nodiscard]] double bestMilliseconds(const MonotonicClock& clock, std::int64_t repetitions, FunctionView<void()> work);

/// Measures what readings of one backend cost, in milliseconds. The backend and the clock outlive it.
class ReadCost {
public:
    static constexpr std::int64_t repetitions = 30;

    ReadCost(HIDTemperatureSensor& sensor, const MonotonicClock& clock) : sensor_(sensor), clock_(clock) {}

    /// The read of one refresh tick: stage by stage, up to the first that has a reading.
    [[nodiscard]] double ofTick(std::span<const NamePatterns> stages) const;
    [[nodiscard]] double ofSensors(const std::set<std::string>& names) const;
    [[nodiscard]] double ofEverySensor() const;

private:
    HIDTemperatureSensor& sensor_;
    const MonotonicClock& clock_;
};

}  // namespace thermopix
