#include "sensing/FakeTemperatureSensor.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

namespace thermopix {
namespace {

TEST(FakeTemperatureSensor, CountsEverySampleCallAndWhatTheLastPredicateAccepted) {
    FakeTemperatureSensor sensor(FakeTemperatureSensor::appleSiliconFixture(), true);
    TemperatureSensing& backend = sensor;
    EXPECT_EQ(backend.sample().size(), 12U);
    EXPECT_EQ(sensor.lastPredicateMatchCount, 12);

    EXPECT_TRUE(backend.sample([](std::string_view) { return false; }).empty());
    EXPECT_EQ(sensor.lastPredicateMatchCount, 0);
    EXPECT_EQ(sensor.sampleCallCount, 2);
    EXPECT_EQ(sensor.refreshCallCount, 0);
}

TEST(FakeTemperatureSensor, AsksThePredicateTwiceASample) {
    FakeTemperatureSensor sensor({{"a", 1}, {"b", 2}, {"c", 3}}, true);
    std::int64_t asked = 0;
    const auto samples = sensor.sample([&](std::string_view name) {
        ++asked;
        return name != "b";
    });
    EXPECT_EQ(samples, (std::vector<SensorSample>{{"a", 1}, {"c", 3}}));
    EXPECT_EQ(asked, 6);
}

TEST(FakeTemperatureSensor, AppliesNoBandOfPlausibleReadings) {
    const std::vector<SensorSample> scripted{{"cold", -40}, {"hot", 900}};
    FakeTemperatureSensor sensor(scripted, true);
    EXPECT_EQ(sensor.sample(), scripted);
}

TEST(FakeTemperatureSensor, AvailabilityIsTheFlagAndDoesNotSilenceTheScript) {
    FakeTemperatureSensor sensor({{"CPU", 50}}, false);
    EXPECT_FALSE(sensor.isAvailable());
    EXPECT_EQ(sensor.sample().size(), 1U);
    sensor.available = true;
    EXPECT_TRUE(sensor.isAvailable());
}

TEST(FakeTemperatureSensor, ARefreshCountsFirstAndThenMayChangeTheScript) {
    FakeTemperatureSensor sensor({}, false);
    sensor.refresh();
    std::int64_t countInside = 0;
    sensor.onRefresh = [&](FakeTemperatureSensor& self) {
        countInside = self.refreshCallCount;
        self.samples = {{"CPU", 50}};
        self.available = true;
    };
    sensor.refresh();
    EXPECT_EQ(countInside, 2);
    EXPECT_TRUE(sensor.isAvailable());
    EXPECT_EQ(sensor.sample(), (std::vector<SensorSample>{{"CPU", 50}}));
}

TEST(FakeTemperatureSensor, ARefreshCallbackMayRemoveItself) {
    FakeTemperatureSensor sensor({}, true);
    std::int64_t calls = 0;
    sensor.onRefresh = [&calls](FakeTemperatureSensor& self) {
        self.onRefresh = nullptr;
        ++calls;
    };
    sensor.refresh();
    sensor.refresh();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(sensor.refreshCallCount, 2);
}

TEST(FakeTemperatureSensorDeathTest, AnOverflowingCounterIsFatal) {
    FakeTemperatureSensor sensor({}, true);
    sensor.sampleCallCount = std::numeric_limits<std::int64_t>::max();
    EXPECT_DEATH((void)sensor.sample(), "Fatal error");
    sensor.refreshCallCount = std::numeric_limits<std::int64_t>::max();
    EXPECT_DEATH(sensor.refresh(), "Fatal error");
}

TEST(FakeTemperatureSensor, TheFixtureIsMadeOnce) {
    EXPECT_EQ(&FakeTemperatureSensor::appleSiliconFixture(), &FakeTemperatureSensor::appleSiliconFixture());
    const auto& fixture = FakeTemperatureSensor::appleSiliconFixture();
    EXPECT_EQ(fixture, (std::vector<SensorSample>{
                           {"pACC MTR Temp Sensor2", 53.97},
                           {"pACC MTR Temp Sensor3", 60.56},
                           {"pACC MTR Temp Sensor4", 59.25},
                           {"eACC MTR Temp Sensor0", 47.48},
                           {"eACC MTR Temp Sensor3", 47.86},
                           {"GPU MTR Temp Sensor1", 30.0},
                           {"GPU MTR Temp Sensor4", 30.0},
                           {"SOC MTR Temp Sensor1", 52.06},
                           {"PMGR SOC Die Temp Sensor0", 47.47},
                           {"gas gauge battery", 32.4},
                           {"NAND CH0 temp", 44.0},
                           {"PMU tdie1", 52.74},
                       }));
}

}  // namespace
}  // namespace thermopix
