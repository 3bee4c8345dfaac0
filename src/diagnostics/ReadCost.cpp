#include "diagnostics/ReadCost.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <string_view>

namespace thermopix {

namespace {

double milliseconds(std::chrono::nanoseconds duration) {
    return std::chrono::duration<double>(duration).count() * 1000;
}

}  // namespace

double bestMilliseconds(const MonotonicClock& clock, std::int64_t repetitions, FunctionView<void()> work) {
    work();
    double best = std::numeric_limits<double>::infinity();
    for (std::int64_t i = 0; i < repetitions; ++i) {
        const auto start = clock.now();
        work();
        best = std::min(best, milliseconds(clock.now() - start));
    }
    return best;
}

ReadCost::Cost ReadCost::ofTick(std::span<const NamePatterns> stages) {
    return best([&] {
        for (const auto& patterns : stages) {
            if (readEach([&](std::string_view name) { return matches(name, patterns); })) {
                break;
            }
        }
    });
}

ReadCost::Cost ReadCost::ofSensors(const std::set<std::string>& names) {
    return best([&] { readEach([&](std::string_view name) { return names.contains(std::string(name)); }); });
}

ReadCost::Cost ReadCost::ofEverySensor() {
    return best([&] {
        const bool allAreQuick = std::all_of(firstReads_.begin(), firstReads_.end(), [](const auto& first) {
            return first && first->milliseconds <= slowestRepeated;
        });
        if (allAreQuick) {
            static_cast<void>(sensor_.sample());
        } else {
            readEach([](std::string_view) { return true; });
        }
    });
}

ReadCost::Cost ReadCost::best(FunctionView<void()> pass) {
    const double rest = bestMilliseconds(clock_, repetitions, [&] {
        leftOut_ = {};
        pass();
    });
    return {rest + leftOut_.milliseconds, leftOut_.readOnce};
}

bool ReadCost::readEach(SensorNamePredicate wanted) {
    bool answered = false;
    const auto& sensors = sensor_.sensors();
    for (std::size_t i = 0; i < sensors.size(); ++i) {
        if (!wanted(sensors[i].name)) {
            continue;
        }
        auto& first = firstReads_[i];
        if (!first) {
            const auto start = clock_.now();
            const bool hasReading = sensor_.read(sensors[i]).has_value();
            first = FirstRead{milliseconds(clock_.now() - start), hasReading};
            answered = answered || hasReading;
        } else if (first->milliseconds > slowestRepeated) {
            leftOut_.milliseconds += first->milliseconds;
            ++leftOut_.readOnce;
            answered = answered || first->answered;
        } else if (sensor_.read(sensors[i])) {
            answered = true;
        }
    }
    return answered;
}

}  // namespace thermopix
