#pragma once

#include <string_view>
#include <vector>

#include "base/FunctionView.h"
#include "sensing/SensorSample.h"

namespace thermopix {

/// A test on a sensor name, without side effects.
using SensorNamePredicate = FunctionView<bool(std::string_view)>;

/// A backend that reads named temperature sensors; main thread. It never fails: a sensor that cannot be read is
/// simply missing from the samples.
class TemperatureSensing {
public:
    virtual ~TemperatureSensing() = default;

    /// Whether the backend can deliver readings at all.
    [[nodiscard]] virtual bool isAvailable() const = 0;

    /// Replaces `samples` by the accepted readings of every sensor whose name satisfies `wanted`, in the backend's
    /// own order. The list is the caller's, so that its memory serves the next reading too.
    virtual void sample(SensorNamePredicate wanted, std::vector<SensorSample>& samples) = 0;

    [[nodiscard]] std::vector<SensorSample> sample(SensorNamePredicate wanted) {
        std::vector<SensorSample> samples;
        sample(wanted, samples);
        return samples;
    }

    /// All readable sensors.
    [[nodiscard]] std::vector<SensorSample> sample() {
        return sample([](std::string_view) { return true; });
    }

    /// Whether a sensor that the last sampling wanted is missing only because its answer is still to come.
    [[nodiscard]] virtual bool isAwaitingAnswer() const { return false; }

    /// Rediscovers the sensors; does nothing in a backend without rediscovery.
    virtual void refresh() {}
};

}  // namespace thermopix
