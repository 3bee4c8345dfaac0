#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "base/FunctionView.h"
#include "sensing/HIDTemperatureSensor.h"
#include "sensing/SensorSource.h"
#include "system/MonotonicClock.h"

namespace thermopix {

/// Milliseconds of the fastest of `repetitions` runs of `work`, after one run that is not timed; infinite for none.
[[nodiscard]] double bestMilliseconds(const MonotonicClock& clock, std::int64_t repetitions, FunctionView<void()> work);

/// Measures what readings of one backend cost. A sensor that takes longer than `slowestRepeated` is read once, and that
/// read counts in every cost that it is part of. The backend and the clock outlive it.
class ReadCost {
public:
    static constexpr std::int64_t repetitions = 30;
    static constexpr double slowestRepeated = 250;

    struct Cost {
        double milliseconds = 0;
        /// How many of the sensors were too slow to be read again.
        std::int64_t readOnce = 0;
    };

    ReadCost(HIDTemperatureSensor& sensor, const MonotonicClock& clock)
        : sensor_(sensor), clock_(clock), firstReads_(sensor.sensors().size()) {}

    /// The read of one refresh tick: stage by stage, up to the first that has a reading.
    [[nodiscard]] Cost ofTick(std::span<const NamePatterns> stages);
    [[nodiscard]] Cost ofSensors(const std::set<std::string>& names);
    [[nodiscard]] Cost ofEverySensor();

private:
    struct FirstRead {
        double milliseconds;
        bool answered;
    };

    [[nodiscard]] Cost best(FunctionView<void()> pass);
    /// Reads the wanted sensors one by one; true when any of them answered.
    bool readEach(SensorNamePredicate wanted);

    HIDTemperatureSensor& sensor_;
    const MonotonicClock& clock_;
    /// By the backend's order.
    std::vector<std::optional<FirstRead>> firstReads_;
    /// What the current pass left out.
    Cost leftOut_;
};

}  // namespace thermopix
