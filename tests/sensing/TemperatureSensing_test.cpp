#include "sensing/TemperatureSensing.h"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>
#include <vector>

#include "fakes/RecordingLog.h"
#include "fakes/ScriptedHIDLoader.h"
#include "sensing/FakeTemperatureSensor.h"
#include "sensing/HIDTemperatureSensor.h"

namespace thermopix {
namespace {

using Samples = std::vector<SensorSample>;

/// The scripted backend on a machine with the given sensors.
class FakeMachine {
public:
    explicit FakeMachine(const Samples& samples) : sensor_(samples, !samples.empty()) {
        sensor_.onRefresh = [this](FakeTemperatureSensor& self) {
            if (next_) {
                self.samples = *next_;
                self.available = !next_->empty();
            }
        };
    }
    [[nodiscard]] TemperatureSensing& backend() { return sensor_; }
    /// The sensors that the next refresh finds.
    void plugIn(const Samples& samples) { next_ = samples; }

private:
    FakeTemperatureSensor sensor_;
    std::optional<Samples> next_;
};

/// The HID backend on a machine with the given sensors.
class HIDMachine {
public:
    explicit HIDMachine(const Samples& samples) {
        plugIn(samples);
        sensor_.emplace(loader_, log_);
    }
    [[nodiscard]] TemperatureSensing& backend() { return *sensor_; }
    void plugIn(const Samples& samples) {
        loader_.services.clear();
        for (const auto& sample : samples) {
            loader_.services.push_back({sample.name, sample.celsius});
        }
    }

private:
    ScriptedHIDLoader loader_;
    RecordingLog log_;
    std::optional<HIDTemperatureSensor> sensor_;
};

/// What every backend promises, whatever it reads from.
template <typename Machine>
class TemperatureSensingContract : public ::testing::Test {};

using Machines = ::testing::Types<FakeMachine, HIDMachine>;
TYPED_TEST_SUITE(TemperatureSensingContract, Machines, );

const Samples threeSensors{{"pACC MTR Temp Sensor2", 50.5}, {"NAND CH0 temp", 44}, {"PMU tdie1", 52.25}};

TYPED_TEST(TemperatureSensingContract, WithoutAPredicateEverySensorIsRead) {
    TypeParam machine(threeSensors);
    EXPECT_TRUE(machine.backend().isAvailable());
    EXPECT_EQ(machine.backend().sample(), threeSensors);
}

TYPED_TEST(TemperatureSensingContract, OnlyWantedNamesAreSampledInTheBackendsOrder) {
    TypeParam machine(threeSensors);
    const auto samples = machine.backend().sample([](std::string_view name) { return name != "NAND CH0 temp"; });
    EXPECT_EQ(samples, (Samples{threeSensors[0], threeSensors[2]}));
}

TYPED_TEST(TemperatureSensingContract, NothingWantedIsAnEmptyList) {
    TypeParam machine(threeSensors);
    EXPECT_TRUE(machine.backend().sample([](std::string_view) { return false; }).empty());
}

TYPED_TEST(TemperatureSensingContract, SensorsOfOneNameAreAllSampled) {
    const Samples twins{{"twin", 40}, {"other", 41}, {"twin", 42}};
    TypeParam machine(twins);
    EXPECT_EQ(machine.backend().sample([](std::string_view name) { return name == "twin"; }),
              (Samples{twins[0], twins[2]}));
}

TYPED_TEST(TemperatureSensingContract, ANameIsReportedExactlyAsItIs) {
    const Samples odd{{"  Spaces, CASE and \u00FCmlauts\t", 40}, {"byte \xFF", 41}};
    TypeParam machine(odd);
    EXPECT_EQ(machine.backend().sample(), odd);
}

TYPED_TEST(TemperatureSensingContract, ALongerListIsReplacedNotExtended) {
    TypeParam machine(threeSensors);
    Samples samples(7, {"left over", 99});
    machine.backend().sample([](std::string_view name) { return name == "PMU tdie1"; }, samples);
    EXPECT_EQ(samples, Samples{threeSensors[2]});
    machine.backend().sample([](std::string_view) { return true; }, samples);
    EXPECT_EQ(samples, threeSensors);
    machine.backend().sample([](std::string_view) { return false; }, samples);
    EXPECT_TRUE(samples.empty());
}

TYPED_TEST(TemperatureSensingContract, TheListKeepsItsMemory) {
    TypeParam machine(threeSensors);
    Samples samples;
    machine.backend().sample([](std::string_view) { return true; }, samples);
    const auto* const list = samples.data();
    const auto* const text = samples.front().name.data();
    machine.backend().sample([](std::string_view) { return true; }, samples);
    EXPECT_EQ(samples, threeSensors);
    EXPECT_EQ(samples.data(), list);
    EXPECT_EQ(samples.front().name.data(), text);
}

TYPED_TEST(TemperatureSensingContract, SamplingTwiceFindsTheSame) {
    TypeParam machine(threeSensors);
    EXPECT_EQ(machine.backend().sample(), machine.backend().sample());
}

TYPED_TEST(TemperatureSensingContract, ARefreshFindsNewSensors) {
    TypeParam machine(threeSensors);
    machine.plugIn({{"external", 33}});
    machine.backend().refresh();
    EXPECT_TRUE(machine.backend().isAvailable());
    EXPECT_EQ(machine.backend().sample(), (Samples{{"external", 33}}));
}

TYPED_TEST(TemperatureSensingContract, AMachineMayGainItsFirstSensorAndLoseItsLast) {
    TypeParam machine(Samples{});
    EXPECT_FALSE(machine.backend().isAvailable());
    EXPECT_TRUE(machine.backend().sample().empty());
    machine.plugIn(threeSensors);
    machine.backend().refresh();
    EXPECT_TRUE(machine.backend().isAvailable());
    EXPECT_EQ(machine.backend().sample(), threeSensors);
    machine.plugIn({});
    machine.backend().refresh();
    EXPECT_FALSE(machine.backend().isAvailable());
    EXPECT_TRUE(machine.backend().sample().empty());
}

}  // namespace
}  // namespace thermopix
