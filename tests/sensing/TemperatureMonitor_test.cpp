#include "sensing/TemperatureMonitor.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "fakes/RecordingLog.h"
#include "sensing/FakeTemperatureSensor.h"

namespace thermopix {
namespace {

constexpr auto celsius = TemperatureUnit::celsius;
constexpr auto fahrenheit = TemperatureUnit::fahrenheit;
constexpr auto cpu = SensorSource::cpu;

class TemperatureMonitorTest : public ::testing::Test {
protected:
    void read(double degrees) { sensor.samples = {{"CPU", degrees}}; }
    void fail() { sensor.samples.clear(); }

    [[nodiscard]] Display poll() { return monitor.poll(cpu, celsius); }
    void pollTimes(std::int64_t count) {
        for (std::int64_t i = 0; i < count; ++i) {
            (void)poll();
        }
    }

    [[nodiscard]] std::string shownFor(const std::string& readings) {
        std::istringstream words(readings);
        std::string all;
        for (std::string word; words >> word;) {
            sensor.samples.clear();
            if (word != "-") {
                read(std::stod(word));
            }
            const Display display = poll();
            all += all.empty() ? "" : ", ";
            all += display.value ? std::to_string(*display.value) : "--";
            all += " " + std::string(rawValue(display.mood)) + (display.isHot ? " hot" : "");
        }
        return all;
    }

    FakeTemperatureSensor sensor{FakeTemperatureSensor::appleSiliconFixture(), true};
    ThermalPressure pressure = ThermalPressure::nominal;
    std::int64_t pressureReads = 0;
    RecordingLog log;
    TemperatureMonitor monitor{sensor,
                               [this] {
                                   ++pressureReads;
                                   return pressure;
                               },
                               log};
};

TEST_F(TemperatureMonitorTest, TheFirstPollShowsTheHottestReadingRounded) {
    EXPECT_EQ(poll(), (Display{61, celsius, ThermalPressure::nominal, false, PetMood::content}));
    EXPECT_EQ(sensor.sampleCallCount, 1);
    EXPECT_EQ(pressureReads, 1);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(TemperatureMonitorTest, ShowsTheUnitAndThePressureOfThePoll) {
    pressure = ThermalPressure::fair;
    EXPECT_EQ(monitor.poll(cpu, fahrenheit),
              (Display{141, fahrenheit, ThermalPressure::fair, false, PetMood::content}));
}

TEST_F(TemperatureMonitorTest, ReadsThePressureOnceAPollAndAfterTheSensors) {
    std::vector<std::int64_t> sampleCallsBeforeEachRead;
    TemperatureMonitor observed(
        sensor,
        [&] {
            sampleCallsBeforeEachRead.push_back(sensor.sampleCallCount);
            return ThermalPressure::nominal;
        },
        log);
    (void)observed.poll(cpu, celsius);
    fail();
    (void)observed.poll(cpu, celsius);
    EXPECT_EQ(sampleCallsBeforeEachRead, (std::vector<std::int64_t>{1, 4}));
}

TEST_F(TemperatureMonitorTest, LastSamplesAreThoseOfTheAnsweringStage) {
    (void)monitor.poll(SensorSource::gpu, celsius);
    EXPECT_EQ(monitor.lastSamples(),
              (std::vector<SensorSample>{{"GPU MTR Temp Sensor1", 30.0}, {"GPU MTR Temp Sensor4", 30.0}}));

    sensor.samples = {{"fan", 20}, {"PMU tdie1", 52.74}, {"PMU tdie2", 50}};
    (void)monitor.poll(SensorSource::gpu, celsius);
    EXPECT_EQ(monitor.lastSamples(), (std::vector<SensorSample>{{"PMU tdie1", 52.74}, {"PMU tdie2", 50}}));
    EXPECT_EQ(sensor.sampleCallCount, 4);
}

TEST_F(TemperatureMonitorTest, AFailedPollLeavesNoSamples) {
    (void)poll();
    sensor.samples = {{"gas gauge battery", 32.4}};
    (void)poll();
    EXPECT_TRUE(monitor.lastSamples().empty());
    EXPECT_EQ(sensor.sampleCallCount, 4);
}

TEST_F(TemperatureMonitorTest, AStageWhoseAnswerIsStillToComeIsNotPassedOver) {
    sensor.samples = {{"PMU tdie1", 52}};
    sensor.awaitsAnswer = true;
    EXPECT_EQ(monitor.poll(SensorSource::gpu, celsius).value, std::nullopt);
    EXPECT_EQ(sensor.sampleCallCount, 1);

    sensor.awaitsAnswer = false;
    EXPECT_EQ(monitor.poll(SensorSource::gpu, celsius).value, 52);
}

TEST_F(TemperatureMonitorTest, AReadingCountsThoughAnotherSensorIsStillAwaited) {
    sensor.awaitsAnswer = true;
    EXPECT_EQ(poll().value, 61);
}

TEST_F(TemperatureMonitorTest, SensorsAreCountedAnewUntilAllHaveAnswered) {
    sensor.awaitsAnswer = true;
    sensor.samples.resize(3);
    EXPECT_EQ(monitor.readableSensorCount(), 3);
    sensor.awaitsAnswer = false;
    sensor.samples.resize(5);
    EXPECT_EQ(monitor.readableSensorCount(), 5);
    sensor.samples.resize(1);
    EXPECT_EQ(monitor.readableSensorCount(), 5);
}

TEST_F(TemperatureMonitorTest, ResetKeepsTheLastSamples) {
    (void)poll();
    const auto samples = monitor.lastSamples();
    ASSERT_EQ(samples.size(), 5U);
    monitor.reset();
    EXPECT_EQ(monitor.lastSamples(), samples);
}

TEST_F(TemperatureMonitorTest, ShowsWhatItsReadingsAmountTo) {
    struct Case {
        /// One a poll; "-" where there is none.
        std::string readings;
        std::string shown;
    };
    const std::vector<Case> cases{
        {"84.99", "85 warm"},
        {"85", "85 scorching hot"},
        // Heat and mood are judged by the blend, and the mood cools reluctantly.
        {"60 100 100", "60 content, 76 warm, 86 scorching hot"},
        {"46 42 20", "46 content, 44 content, 35 chilly"},
        // Two failures keep value and mood, the third blanks them.
        {"70 - - -", "70 warm, 70 warm, 70 warm, -- content"},
        {"90 -", "90 scorching hot, 90 scorching hot"},
        {"- -", "-- content, -- content"},
        // The blend outlives what is held, and no blank.
        {"50 - - 60", "50 content, 50 content, 50 content, 54 content"},
        {"50 - - - 60", "50 content, 50 content, 50 content, -- content, 60 content"},
    };
    for (const auto& [readings, shown] : cases) {
        monitor.reset();
        EXPECT_EQ(shownFor(readings), shown) << readings;
    }
}

TEST_F(TemperatureMonitorTest, ElevatedPressureIsHotWhateverTheReading) {
    read(20);
    pressure = ThermalPressure::serious;
    EXPECT_EQ(poll(), (Display{20, celsius, ThermalPressure::serious, true, PetMood::scorching}));
}

TEST_F(TemperatureMonitorTest, RediscoversAtTheThirdAndEveryFifteenthFailure) {
    fail();
    std::vector<std::int64_t> refreshed;
    for (std::int64_t failure = 1; failure <= 46; ++failure) {
        const auto before = sensor.refreshCallCount;
        (void)poll();
        if (sensor.refreshCallCount != before) {
            EXPECT_EQ(sensor.refreshCallCount, before + 1);
            refreshed.push_back(failure);
        }
    }
    EXPECT_EQ(refreshed, (std::vector<std::int64_t>{3, 15, 30, 45}));
    EXPECT_EQ(log.lines, (std::vector<std::string>{"sensor: no reading for 3 polls; re-resolving sensors",
                                                   "sensor: no reading for 15 polls; re-resolving sensors",
                                                   "sensor: no reading for 30 polls; re-resolving sensors",
                                                   "sensor: no reading for 45 polls; re-resolving sensors"}));
}

TEST_F(TemperatureMonitorTest, RediscoveryIsSeenByTheNextPoll) {
    fail();
    sensor.onRefresh = [](FakeTemperatureSensor& self) { self.samples = {{"CPU", 50}}; };
    pollTimes(2);
    EXPECT_EQ(poll().value, std::nullopt);
    EXPECT_EQ(poll().value, 50);
}

TEST_F(TemperatureMonitorTest, HoldingIsHotByThePressureToo) {
    read(50);
    (void)poll();
    fail();
    pressure = ThermalPressure::critical;
    EXPECT_EQ(poll(), (Display{50, celsius, ThermalPressure::critical, true, PetMood::content}));
}

TEST_F(TemperatureMonitorTest, BlankFollowsThePressure) {
    fail();
    pollTimes(2);
    pressure = ThermalPressure::serious;
    EXPECT_EQ(poll(), (Display{std::nullopt, celsius, ThermalPressure::serious, true, PetMood::scorching}));
    pressure = ThermalPressure::fair;
    EXPECT_EQ(poll(), (Display{std::nullopt, celsius, ThermalPressure::fair, false, PetMood::content}));
}

TEST_F(TemperatureMonitorTest, OneReadingEndsTheCountOfFailures) {
    fail();
    pollTimes(2);
    read(50);
    (void)poll();
    fail();
    pollTimes(2);
    EXPECT_EQ(sensor.refreshCallCount, 0);
    (void)poll();
    EXPECT_EQ(sensor.refreshCallCount, 1);
}

TEST_F(TemperatureMonitorTest, AnotherSourceShowsItsOwnReading) {
    EXPECT_EQ(poll().value, 61);
    EXPECT_EQ(monitor.poll(SensorSource::storage, celsius).value, 44);
    EXPECT_EQ(monitor.poll(SensorSource::cpu, celsius).value, 61);
}

TEST_F(TemperatureMonitorTest, AnotherSourceStartsTheCountOfFailuresAnew) {
    fail();
    pollTimes(2);
    (void)monitor.poll(SensorSource::gpu, celsius);
    (void)monitor.poll(SensorSource::gpu, celsius);
    EXPECT_EQ(sensor.refreshCallCount, 0);
    (void)monitor.poll(SensorSource::gpu, celsius);
    EXPECT_EQ(sensor.refreshCallCount, 1);
}

TEST_F(TemperatureMonitorTest, AnotherSourceKeepsTheMoodToCoolFrom) {
    sensor.samples = {{"CPU", 70}, {"NAND", 63}};
    EXPECT_EQ(poll().mood, PetMood::warm);
    EXPECT_EQ(monitor.poll(SensorSource::storage, celsius).mood, PetMood::warm);
}

TEST_F(TemperatureMonitorTest, AnotherUnitShowsTheSameBlend) {
    read(50);
    (void)poll();
    read(60);
    EXPECT_EQ(monitor.poll(cpu, fahrenheit).value, 129);  // 54 degrees Celsius
}

TEST_F(TemperatureMonitorTest, HoldingShowsTheNewUnitWithTheOldNumber) {
    read(50);
    (void)poll();
    fail();
    EXPECT_EQ(monitor.poll(cpu, fahrenheit),
              (Display{50, fahrenheit, ThermalPressure::nominal, false, PetMood::content}));
    read(50);
    EXPECT_EQ(monitor.poll(cpu, fahrenheit).value, 122);
}

TEST_F(TemperatureMonitorTest, APollAfterResetIsLikeTheFirst) {
    read(90);
    (void)poll();
    monitor.reset();
    EXPECT_EQ(sensor.refreshCallCount, 1);
    read(84);
    EXPECT_EQ(poll(), (Display{84, celsius, ThermalPressure::nominal, false, PetMood::warm}));
}

TEST_F(TemperatureMonitorTest, ResetForgetsTheFailures) {
    fail();
    pollTimes(2);
    monitor.reset();
    EXPECT_EQ(sensor.refreshCallCount, 1);
    pollTimes(2);
    EXPECT_EQ(sensor.refreshCallCount, 1);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(TemperatureMonitorTest, CountsTheReadableSensorsOnceUntilReset) {
    EXPECT_EQ(monitor.readableSensorCount(), 12);
    read(50);
    EXPECT_EQ(monitor.readableSensorCount(), 12);
    EXPECT_EQ(sensor.sampleCallCount, 1);
    monitor.reset();
    EXPECT_EQ(monitor.readableSensorCount(), 1);
}

TEST_F(TemperatureMonitorTest, RediscoveryAfterFailuresKeepsTheCountOfReadableSensors) {
    EXPECT_EQ(monitor.readableSensorCount(), 12);
    fail();
    pollTimes(3);
    EXPECT_EQ(sensor.refreshCallCount, 1);
    EXPECT_EQ(monitor.readableSensorCount(), 12);
}

TEST_F(TemperatureMonitorTest, CountingLeavesTheLastSamplesAlone) {
    (void)monitor.poll(SensorSource::storage, celsius);
    (void)monitor.readableSensorCount();
    EXPECT_EQ(monitor.lastSamples(), (std::vector<SensorSample>{{"NAND CH0 temp", 44.0}}));
}

TEST_F(TemperatureMonitorTest, PassesTheAvailabilityOn) {
    EXPECT_TRUE(monitor.isSensorAvailable());
    sensor.available = false;
    EXPECT_FALSE(monitor.isSensorAvailable());
}

TEST_F(TemperatureMonitorTest, SaysWhichStageAnswersAndLogsEachChangeOnce) {
    sensor.samples = {{"CPU", 50}, {"GPU MTR Temp Sensor1", 60}, {"PMU tdie1", 70}};
    pollTimes(2);
    EXPECT_EQ(monitor.origin(), (ReadingOrigin{cpu, 0, 0}));
    EXPECT_TRUE(log.lines.empty());

    sensor.samples = {{"GPU MTR Temp Sensor1", 60}, {"SOC MTR Temp Sensor1", 61}};
    pollTimes(2);
    EXPECT_EQ(monitor.origin(), (ReadingOrigin{cpu, 1, 2}));
    sensor.samples = {{"PMU tdie1", 70}};
    pollTimes(2);
    EXPECT_EQ(monitor.origin(), (ReadingOrigin{cpu, 2, 1}));
    sensor.samples = {{"CPU", 50}};
    pollTimes(2);
    EXPECT_EQ(log.lines, (std::vector<std::string>{"sensor: No CPU sensor answers: hottest of 2 others",
                                                   "sensor: No CPU sensor answers: one other does",
                                                   "sensor: the sensors of the source answer again"}));
}

TEST_F(TemperatureMonitorTest, TheReadingOriginIsThatOfTheReadingShown) {
    EXPECT_EQ(monitor.origin(), std::nullopt);
    read(50);
    pollTimes(1);
    const auto origin = monitor.origin();
    EXPECT_NE(origin, std::nullopt);
    fail();
    pollTimes(2);
    EXPECT_EQ(monitor.origin(), origin);
    pollTimes(1);
    EXPECT_EQ(monitor.origin(), std::nullopt);
}

TEST(ReadingOrigin, TheNoteNamesWhatIsMissing) {
    EXPECT_EQ(fallbackNote({SensorSource::gpu, 0, 0}), "");
    EXPECT_EQ(fallbackNote({SensorSource::gpu, 1, 3}), "No GPU sensor answers: hottest of 3 others");
    EXPECT_EQ(fallbackNote({SensorSource::storage, 2, 1}), "No Storage sensor answers: one other does");
    EXPECT_EQ(fallbackNote({SensorSource::hottest, 1, 2}), "No CPU, GPU or SoC sensor answers: hottest of 2 others");
}

/// Answers more than was asked for.
class CarelessSensor final : public TemperatureSensing {
public:
    using TemperatureSensing::sample;
    [[nodiscard]] bool isAvailable() const override { return true; }
    void sample(SensorNamePredicate /*wanted*/, std::vector<SensorSample>& samples) override {
        samples = {{"fan", 120}, {"CPU", 50}};
    }
};

TEST(TemperatureMonitor, FoldsOnlyTheSamplesThatMatchTheStage) {
    CarelessSensor sensor;
    RecordingLog log;
    TemperatureMonitor monitor(
        sensor, [] { return ThermalPressure::nominal; }, log);
    EXPECT_EQ(monitor.poll(cpu, celsius).value, 50);
    monitor.reset();  // a backend without rediscovery
    EXPECT_EQ(monitor.poll(cpu, celsius).value, 50);
}

}  // namespace
}  // namespace thermopix
