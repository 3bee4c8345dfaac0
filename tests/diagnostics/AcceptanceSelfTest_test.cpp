#include "diagnostics/AcceptanceSelfTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/Services.h"
#include "fakes/FakePlatform.h"
#include "fakes/RecordingOutput.h"

namespace thermopix {
namespace {

using Lines = std::vector<std::string>;

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
    [[nodiscard]] bool mentions(std::string_view text) const { return output.text().find(text) != std::string::npos; }

    FakePlatform platform;
    RecordingOutput output;
};

TEST_F(AcceptanceSelfTestTest, NamesTheMachineFirst) {
    EXPECT_EQ(run(laptopServices()), 0);
    ASSERT_GE(output.lines.size(), 2U);
    EXPECT_EQ(output.lines[0], "=== Thermopix acceptance self-test ===");
    EXPECT_EQ(output.lines[1], "Model One · Processor Nine · Version 12 (Bookworm)");
}

TEST_F(AcceptanceSelfTestTest, WithoutSensorsTheSensorChecksFailAndTheRenderingChecksStillRun) {
    EXPECT_EQ(run({}), 1);
    const Lines sensorChecks(output.lines.begin() + 2, output.lines.begin() + 6);
    EXPECT_EQ(sensorChecks,
              (Lines{"FAIL  IOKit HID sensor service opens  — unavailable — no thermal HID services on this Mac",
                     "FAIL  at least one sensor readable  — 0 found", "  ok  every reading is plausible",
                     "FAIL  a CPU-ish temperature resolves  — none"}));
    EXPECT_FALSE(mentions(bandLabel));
    EXPECT_TRUE(printed("  ok  Arcade/C rasterizes  — 23×7 cells"));
    EXPECT_EQ(output.lines.back(), "FAILED (3)");
}

TEST_F(AcceptanceSelfTestTest, EveryStyleIsCheckedInOrder) {
    EXPECT_EQ(run(laptopServices()), 0);
    const auto start =
        std::find(output.lines.begin(), output.lines.end(), "  ok  Micro/Compact fits the menu bar  — 14 pt of 22");
    ASSERT_GE(output.lines.end() - start, 6);
    EXPECT_EQ(Lines(start, start + 6),
              (Lines{"  ok  Micro/Compact fits the menu bar  — 14 pt of 22",
                     "  ok  Micro/Large fits the menu bar  — 21 pt of 22", "  ok  Micro/C rasterizes  — 15×5 cells",
                     "  ok  Micro/F rasterizes  — 19×5 cells", "  ok  Micro/C has one width from 0–99 °C  — [15]",
                     "  ok  Micro/F has one width from 0–150 °C  — [19]"}));
    EXPECT_EQ(output.lines.size(), 2U + 5U + 4U * 6U + 2U);
    EXPECT_EQ(output.lines.back(), "PASSED");
}

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

TEST_F(AcceptanceSelfTestTest, SensorsWithoutAProcessorAmongThemFailOneCheck) {
    EXPECT_EQ(run({{"gas gauge battery", 31.5}}), 1);
    EXPECT_TRUE(printed("  ok  IOKit HID sensor service opens  — ready (1 sensors)"));
    EXPECT_TRUE(printed("  ok  at least one sensor readable  — 1 found"));
    EXPECT_TRUE(printed("FAIL  a CPU-ish temperature resolves  — none"));
    EXPECT_EQ(output.lines.back(), "FAILED (1)");
}

TEST_F(AcceptanceSelfTestTest, AHotReadoutCarriesItsFlameAndTheSweepDoesNot) {
    EXPECT_EQ(run({{"CPU", 99}}), 0);
    EXPECT_TRUE(printed("  ok  Arcade/C rasterizes  — 29×7 cells"));
    EXPECT_TRUE(printed("  ok  Arcade/C has one width from 0–99 °C  — [23]"));
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
