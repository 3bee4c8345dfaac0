// What no report of ScriptedMachines_test shows.

#include "diagnostics/AcceptanceSelfTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "diagnostics/Services.h"
#include "fakes/FakePlatform.h"
#include "fakes/RecordingOutput.h"

namespace thermopix {
namespace {

constexpr std::string_view bandLabel = "CPU temperature is in a believable band";

class AcceptanceSelfTestTest : public testing::Test {
protected:
    std::int32_t run(Services services) {
        platform.hid.services = std::move(services);
        output.lines.clear();
        return AcceptanceSelfTest::run(platform, output);
    }

    [[nodiscard]] bool printed(std::string_view line) const {
        return std::find(output.lines.begin(), output.lines.end(), line) != output.lines.end();
    }

    FakePlatform platform;
    RecordingOutput output;
};

TEST_F(AcceptanceSelfTestTest, TheProcessorIsBelievableFrom10To110Degrees) {
    const std::pair<double, bool> readings[] = {{9.99, false}, {10, true}, {110, true}, {110.01, false}};
    for (const auto& [celsius, believable] : readings) {
        EXPECT_EQ(run({{"CPU", celsius}}), believable ? 0 : 1) << celsius;
        EXPECT_TRUE(printed((believable ? "  ok  " : "FAIL  ") + std::string(bandLabel))) << celsius;
        EXPECT_EQ(output.lines.back(), believable ? "PASSED" : "FAILED (1)");
    }
}

TEST_F(AcceptanceSelfTestTest, TheProcessorIsTheHottestSensorOfTheFirstStageThatReads) {
    EXPECT_EQ(run({{"CPU 1", 50.04}, {"CPU 2", 61.25}, {"tdie", 99}}), 0);
    EXPECT_TRUE(printed("  ok  a CPU-ish temperature resolves  — 61.2 °C"));
    EXPECT_EQ(run({{"CPU 1", 0.5}, {"GPU MTR Temp Sensor1", 44}, {"tdie", 99}}), 0);
    EXPECT_TRUE(printed("  ok  a CPU-ish temperature resolves  — 44.0 °C"));
    EXPECT_EQ(run({{"tdie", 42}}), 0);
    EXPECT_TRUE(printed("  ok  a CPU-ish temperature resolves  — 42.0 °C"));
}

TEST_F(AcceptanceSelfTestTest, SeriousPressureMakesTheReadoutHot) {
    platform.thermal.state = 2;
    EXPECT_EQ(run({{"CPU", 50}}), 0);
    EXPECT_TRUE(printed("  ok  Micro/C rasterizes  — 19×5 cells"));
}

TEST_F(AcceptanceSelfTestTest, LeavesTheSettingsAlone) {
    EXPECT_EQ(run(laptopServices()), 0);
    EXPECT_EQ(platform.databases.standardDefaults->writeCount, 0);
    EXPECT_EQ(platform.loginItemsMade, 0);
    EXPECT_EQ(platform.updatersMade, 0);
}

}  // namespace
}  // namespace thermopix
