#include "diagnostics/ReadCost.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <vector>

#include "diagnostics/Services.h"
#include "fakes/FakeSystem.h"
#include "fakes/RecordingLog.h"

namespace thermopix {
namespace {

using std::chrono::nanoseconds;

/// Shows a scripted time at each reading; the last one stays.
class ScriptedClock final : public MonotonicClock {
public:
    explicit ScriptedClock(std::vector<std::int64_t> times) : times_(std::move(times)) {}
    [[nodiscard]] nanoseconds now() const override { return nanoseconds(times_[std::min(next_++, times_.size() - 1)]); }

private:
    std::vector<std::int64_t> times_;
    mutable std::size_t next_ = 0;
};

TEST(BestMilliseconds, IsTheFastestOfTheRuns) {
    const ScriptedClock clock({0, 9'000'000, 10'000'000, 12'500'000, 20'000'000, 24'000'000});
    EXPECT_DOUBLE_EQ(bestMilliseconds(clock, 3, [] {}), 2.5);
}

TEST(BestMilliseconds, RunsOnceUntimedBeforeItLooksAtTheClock) {
    const SteppingClock clock;
    std::vector<std::int64_t> seen;
    EXPECT_DOUBLE_EQ(bestMilliseconds(clock, 2, [&] { seen.push_back(clock.now().count()); }), 0.002);
    // Each reading of the clock moves it on by 1000 ns: the first run comes before the first timed start.
    EXPECT_EQ(seen, (std::vector<std::int64_t>{1000, 3000, 6000}));
}

TEST(BestMilliseconds, WithoutRepetitionsIsInfinite) {
    const SteppingClock clock;
    int runs = 0;
    EXPECT_EQ(bestMilliseconds(clock, 0, [&] { ++runs; }), std::numeric_limits<double>::infinity());
    EXPECT_EQ(runs, 1);
}

class ReadCostTest : public testing::Test {
protected:
    static constexpr std::int64_t passes = 1 + ReadCost::repetitions;

    /// How often a service was read while `measure` ran, a pass.
    template <typename Measure>
    std::int64_t readsPerPass(Services services, Measure measure) {
        loader.services = std::move(services);
        HIDTemperatureSensor sensor(loader, log);
        const SteppingClock clock;
        const auto before = loader.copyEventCount;
        ReadCost cost(sensor, clock);
        EXPECT_DOUBLE_EQ(measure(cost).milliseconds, 0.001);
        const auto reads = loader.copyEventCount - before;
        EXPECT_EQ(reads % passes, 0);
        return reads / passes;
    }

    ScriptedHIDLoader loader;
    RecordingLog log;
};

TEST_F(ReadCostTest, ATickStopsAfterTheFirstStageThatReads) {
    const auto tick = [](ReadCost& cost) { return cost.ofTick(samplingStages(SensorSource::gpu)); };
    EXPECT_EQ(readsPerPass({{"GPU MTR Temp Sensor1", 40.0}, {"CPU", 50.0}, {"tdie", 50.0}}, tick), 1);
}

TEST_F(ReadCostTest, ATickGoesOnWhenTheReadingsOfAStageAreOutsideTheBand) {
    const auto tick = [](ReadCost& cost) { return cost.ofTick(samplingStages(SensorSource::gpu)); };
    EXPECT_EQ(readsPerPass({{"GPU MTR Temp Sensor1", 150.5}, {"CPU", 50.0}, {"tdie", 50.0}}, tick), 1 + 2);
}

TEST_F(ReadCostTest, ATickReadsNoMoreStagesThanItIsGiven) {
    const auto tick = [](ReadCost& cost) { return cost.ofTick(samplingStages(SensorSource::gpu).first(1)); };
    EXPECT_EQ(readsPerPass({{"GPU MTR Temp Sensor1", 0.5}, {"CPU", 50.0}}, tick), 1);
}

TEST_F(ReadCostTest, NamedSensorsAreReadWhetherOrNotTheyAnswer) {
    const auto named = [](ReadCost& cost) { return cost.ofSensors({"CPU", "Fan", "No such sensor"}); };
    EXPECT_EQ(readsPerPass({{"CPU", 50.0}, {"CPU", std::nullopt}, {"Fan", 500.0}, {"GPU", 50.0}}, named), 3);
}

/// Moves on by 251 ms in the first read and not at all after it.
class SlowStartClock final : public MonotonicClock {
public:
    [[nodiscard]] nanoseconds now() const override { return std::chrono::milliseconds(readings_++ == 0 ? 0 : 251); }

private:
    mutable int readings_ = 0;
};

TEST_F(ReadCostTest, ASlowSensorIsReadOnceAndCountsInEveryCost) {
    loader.services = {{"CPU", 50.0}, {"GPU MTR Temp Sensor1", 40.0}};
    HIDTemperatureSensor sensor(loader, log);
    const SlowStartClock clock;
    ReadCost cost(sensor, clock);
    for (int i = 0; i < 3; ++i) {
        const auto ofTick = cost.ofTick(samplingStages(SensorSource::cpu));
        EXPECT_DOUBLE_EQ(ofTick.milliseconds, 251);
        EXPECT_EQ(ofTick.readOnce, 1);
    }
    EXPECT_EQ(loader.copyEventCount, 1);

    const auto everySensor = cost.ofEverySensor();
    EXPECT_DOUBLE_EQ(everySensor.milliseconds, 251);
    EXPECT_EQ(everySensor.readOnce, 1);
    EXPECT_EQ(cost.ofTick(samplingStages(SensorSource::gpu)).readOnce, 0);
}

TEST_F(ReadCostTest, EverySensorIsOneWholeSample) {
    const auto every = [](ReadCost& cost) { return cost.ofEverySensor(); };
    EXPECT_EQ(readsPerPass(laptopServices(), every), 12);
}

}  // namespace
}  // namespace thermopix
