#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>

#include "fakes/RecordingLog.h"
#include "fakes/ScriptedHIDLoader.h"
#include "sensing/FakeTemperatureSensor.h"
#include "sensing/HIDTemperatureSensor.h"
#include "sensing/SensorSource.h"
#include "sensing/TemperatureMonitor.h"

namespace {

std::int64_t allocationCount = 0;

void* countedAllocation(std::size_t size) {
    ++allocationCount;
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

}  // namespace

// The whole executable allocates through these.
void* operator new(std::size_t size) {
    return countedAllocation(size);
}
void* operator new[](std::size_t size) {
    return countedAllocation(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace thermopix {
namespace {

template <typename Work>
std::int64_t allocationsOf(const Work& work) {
    const std::int64_t before = allocationCount;
    work();
    return allocationCount - before;
}

class PollAllocation : public ::testing::TestWithParam<SensorSource> {
protected:
    PollAllocation() {
        for (const auto& sample : FakeTemperatureSensor::appleSiliconFixture()) {
            loader.services.push_back({sample.name, sample.celsius});
        }
    }

    ScriptedHIDLoader loader;
    RecordingLog log;
};

TEST_P(PollAllocation, OnlyTheFirstPollAllocates) {
    HIDTemperatureSensor sensor(loader, log);
    TemperatureMonitor monitor(
        sensor, [] { return ThermalPressure::nominal; }, log);
    const auto poll = [&] { (void)monitor.poll(GetParam(), TemperatureUnit::celsius); };
    EXPECT_GT(allocationsOf(poll), 0);
    EXPECT_EQ(allocationsOf(poll), 0);
    EXPECT_EQ(allocationsOf(poll), 0);
    EXPECT_FALSE(monitor.lastSamples().empty());
}

TEST_P(PollAllocation, ChangedReadingsAllocateNothing) {
    HIDTemperatureSensor sensor(loader, log);
    TemperatureMonitor monitor(
        sensor, [] { return ThermalPressure::nominal; }, log);
    const auto poll = [&] { (void)monitor.poll(GetParam(), TemperatureUnit::fahrenheit); };
    poll();
    for (auto& service : loader.services) {
        *service.celsius += 20;
    }
    EXPECT_EQ(allocationsOf(poll), 0);
}

INSTANTIATE_TEST_SUITE_P(EverySource, PollAllocation, ::testing::ValuesIn(allCases<SensorSource>()),
                         [](const auto& instance) { return std::string(rawValue(instance.param)); });

TEST(PollAllocation, AStageThatFindsNothingLeavesTheNextOneItsMemory) {
    ScriptedHIDLoader loader;
    loader.services = {{"the temperature of the CPU package", 50}, {"the temperature of the SOC MTR Temp", 60}};
    RecordingLog log;
    HIDTemperatureSensor sensor(loader, log);
    TemperatureMonitor monitor(
        sensor, [] { return ThermalPressure::nominal; }, log);
    const auto poll = [&] { (void)monitor.poll(SensorSource::gpu, TemperatureUnit::celsius); };
    poll();
    EXPECT_EQ(allocationsOf(poll), 0);
    EXPECT_EQ(monitor.lastSamples().size(), 2);
}

}  // namespace
}  // namespace thermopix
