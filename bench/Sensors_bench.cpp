// Every temperature of the machine in /sys, read by us and by libsensors.

#include <benchmark/benchmark.h>
#include <sensors/error.h>
#include <sensors/sensors.h>

#include <utility>
#include <vector>

#include "AllocationCounter.h"
#include "fakes/RecordingLog.h"
#include "platform/linux/sensors/SysfsHIDSymbols.h"
#include "sensing/HIDTemperatureSensor.h"

namespace thermopix {
namespace {

void report(benchmark::State& state, std::size_t readings, std::int64_t allocationsBefore) {
    state.counters["readings"] = static_cast<double>(readings);
    state.counters["allocations"] = benchmark::Counter(static_cast<double>(heapAllocations() - allocationsBefore),
                                                       benchmark::Counter::kAvgIterations);
}

void everySensor(benchmark::State& state) {
    RecordingLog log;
    SysfsHIDSymbols symbols("/sys");
    HIDTemperatureSensor sensor(symbols, log);
    std::vector<SensorSample> samples;
    sensor.sample([](std::string_view) { return true; }, samples);
    const auto before = heapAllocations();
    for (auto _ : state) {
        sensor.sample([](std::string_view) { return true; }, samples);
        benchmark::DoNotOptimize(samples);
    }
    report(state, samples.size(), before);
}
BENCHMARK(everySensor);

void everySensorOfLibsensors(benchmark::State& state) {
    if (sensors_init(nullptr) != 0) {
        state.SkipWithError("libsensors finds no sensors");
        return;
    }
    std::vector<std::pair<const sensors_chip_name*, int>> inputs;
    int chipNumber = 0;
    while (const auto* const chip = sensors_get_detected_chips(nullptr, &chipNumber)) {
        int featureNumber = 0;
        while (const auto* const feature = sensors_get_features(chip, &featureNumber)) {
            const auto* const input = sensors_get_subfeature(chip, feature, SENSORS_SUBFEATURE_TEMP_INPUT);
            if (feature->type == SENSORS_FEATURE_TEMP && input != nullptr) {
                inputs.emplace_back(chip, input->number);
            }
        }
    }
    std::size_t readings = 0;
    const auto before = heapAllocations();
    for (auto _ : state) {
        readings = 0;
        for (const auto& [chip, number] : inputs) {
            double celsius = 0;
            readings += sensors_get_value(chip, number, &celsius) == 0 ? 1U : 0U;
            benchmark::DoNotOptimize(celsius);
        }
    }
    report(state, readings, before);
    sensors_cleanup();
}
BENCHMARK(everySensorOfLibsensors);

}  // namespace
}  // namespace thermopix
