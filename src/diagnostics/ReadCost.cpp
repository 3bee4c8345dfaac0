#include "diagnostics/ReadCost.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <string_view>

namespace thermopix {

namespace {

/// Reads the wanted sensors one by one; true when any of them answered.
bool readEach(const HIDTemperatureSensor& backend, SensorNamePredicate wanted) {
    bool answered = false;
    for (const auto& sensor : backend.sensors()) {
        if (wanted(sensor.name) && backend.read(sensor)) {
            answered = true;
        }
    }
    return answered;
}

}  // namespace

double bestMilliseconds(const MonotonicClock& clock, std::int64_t repetitions, FunctionView<void()> work) {
    work();
    double best = std::numeric_limits<double>::infinity();
    for (std::int64_t i = 0; i < repetitions; ++i) {
        const auto start = clock.now();
        work();
        const std::chrono::duration<double> elapsed = clock.now() - start;
        best = std::min(best, elapsed.count());
    }
    return best * 1000;
}

double ReadCost::ofTick(std::span<const NamePatterns> stages) const {
    return bestMilliseconds(clock_, repetitions, [&] {
        for (const auto& patterns : stages) {
            if (readEach(sensor_, [&](std::string_view name) { return matches(name, patterns); })) {
                break;
            }
        }
    });
}

double ReadCost::ofSensors(const std::set<std::string>& names) const {
    return bestMilliseconds(clock_, repetitions, [&] {
        readEach(sensor_, [&](std::string_view name) { return names.contains(std::string(name)); });
    });
}

double ReadCost::ofEverySensor() const {
    return bestMilliseconds(clock_, repetitions, [&] { static_cast<void>(sensor_.sample()); });
}

}  // namespace thermopix
