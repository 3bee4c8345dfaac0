#include "sensing/SamplingStage.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "sensing/FakeTemperatureSensor.h"

namespace thermopix {
namespace {

using Samples = std::vector<SensorSample>;

class SamplingStageTest : public ::testing::Test {
protected:
    /// What the stage reads of a machine with these sensors.
    Samples sampled(const Samples& machine) {
        sensor.samples = machine;
        hottest = stage.sample(sensor);
        return stage.samples();
    }

    FakeTemperatureSensor sensor{{}, true};
    SamplingStage stage{namePatterns(SensorSource::cpu)};
    std::optional<double> hottest;
};

TEST_F(SamplingStageTest, ReadsWhatMatchesAndFindsTheHottest) {
    const Samples machine{{"CPU 1", 50}, {"fan", 90}, {"CPU 2", 60}};
    for (int poll = 0; poll < 3; ++poll) {
        EXPECT_EQ(sampled(machine), (Samples{{"CPU 1", 50}, {"CPU 2", 60}}));
        EXPECT_EQ(hottest, 60);
    }
}

TEST_F(SamplingStageTest, FollowsSensorsThatComeGoAndChangePlaces) {
    const SensorSample first{"CPU 1", 50};
    const SensorSample second{"CPU 2", 60};
    const SensorSample third{"pACC MTR Temp", 70};
    const SensorSample fan{"fan", 90};
    EXPECT_EQ(sampled({first, second, fan}), (Samples{first, second}));
    EXPECT_EQ(sampled({fan, second, first}), (Samples{second, first}));
    EXPECT_EQ(sampled({second}), (Samples{second}));
    EXPECT_EQ(sampled({fan}), Samples());
    EXPECT_EQ(hottest, std::nullopt);
    EXPECT_EQ(sampled({third, fan, first}), (Samples{third, first}));
    EXPECT_EQ(hottest, 70);
    EXPECT_EQ(sampled({fan, fan, third, third}), (Samples{third, third}));
}

TEST_F(SamplingStageTest, WithoutPatternsFindsNothing) {
    stage = SamplingStage();
    EXPECT_EQ(sampled({{"CPU", 50}}), Samples());
    EXPECT_EQ(hottest, std::nullopt);
}

}  // namespace
}  // namespace thermopix
