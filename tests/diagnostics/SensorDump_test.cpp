// What no report of ScriptedMachines_test shows.

#include "diagnostics/SensorDump.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/ReportPlatform.h"
#include "diagnostics/Services.h"
#include "fakes/RecordingOutput.h"

namespace thermopix {
namespace {

class SensorDumpTest : public testing::Test {
protected:
    std::int32_t run() { return SensorDump::run(platform, output); }

    [[nodiscard]] bool printed(std::string_view line) const {
        return std::find(output.lines.begin(), output.lines.end(), line) != output.lines.end();
    }
    [[nodiscard]] std::size_t linesStarting(std::string_view start) const {
        return static_cast<std::size_t>(std::count_if(output.lines.begin(), output.lines.end(),
                                                      [&](const auto& line) { return line.starts_with(start); }));
    }
    /// The lines between this one and the next empty one.
    [[nodiscard]] std::vector<std::string> section(std::string_view header) const {
        auto start = std::find(output.lines.begin(), output.lines.end(), header);
        if (start == output.lines.end()) {
            ADD_FAILURE() << "no section " << header << " in\n" << output.text();
            return {};
        }
        ++start;
        return {start, std::find(start, output.lines.end(), "")};
    }

    using Lines = std::vector<std::string>;

    ReportPlatform platform;
    RecordingOutput output;
};

TEST_F(SensorDumpTest, ASensorOfTwoSourcesIsListedUnderBothAndIsNotLeftOver) {
    platform.fake.hid.services = {{"CPU GPU MTR Temp Sensor1", 50.0}};
    EXPECT_EQ(run(), 0);
    const std::string row = "      CPU GPU MTR Temp Sensor1     50.00";
    EXPECT_EQ(section("--- CPU  50.0 °C  (1 sensor)"), Lines{row});
    EXPECT_EQ(section("--- GPU  50.0 °C  (1 sensor)"), Lines{row});
    EXPECT_EQ(linesStarting("--- matched"), 0U);
}

TEST_F(SensorDumpTest, EqualReadingsKeepTheOrderOfTheSystem) {
    platform.fake.hid.services = {{"CPU b", 50.0}, {"CPU a", 50.0}, {"CPU c", 51.0}, {"CPU 0", 50.0}};
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(section("--- CPU  51.0 °C  (4 sensors)"),
              (Lines{"      CPU c                        51.00", "      CPU b                        50.00",
                     "      CPU a                        50.00", "      CPU 0                        50.00"}));
}

TEST_F(SensorDumpTest, ASensorThatDoesNotAnswerCostsATickItsReadAndMakesTheSourceWiden) {
    platform.fake.hid.services = {{"GPU MTR Temp Sensor1", 0.0}, {"CPU", 50.0}};
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(printed("--- GPU  50.0 °C  (1 sensor)  via fallback stage 2 of 3"));
    EXPECT_TRUE(printed("      GPU                 0.75 ms  (1 sensor, 2 stages)"));
}

TEST_F(SensorDumpTest, EverySensorBelongsToOneFamilyAndEmptyFamiliesPrintNothing) {
    platform.fake.hid.services = {
        {"battery of the CPU", 30.0}, {"gas gauge battery", 30.0}, {"SSD MTR Temp", 30.0}, {"Ambient", 20.0}};
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(section("--- cost by sensor family"),
              (Lines{"      named silicon       0.25 ms  (1 sensor, 0.25 ms each)",
                     "      battery cells       0.25 ms  (1 sensor, 0.25 ms each)",
                     "      internal SSD        0.25 ms  (1 sensor, 0.25 ms each)",
                     "      everything else     0.25 ms  (1 sensor, 0.25 ms each)"}));
}

TEST_F(SensorDumpTest, SensorsOfOneNameAreOneReadEachInTheirFamily) {
    platform.fake.hid.services = {{"CPU", 50.0}, {"CPU", 51.0}, {"CPU", 0.0}};
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(printed("      named silicon       0.75 ms  (2 sensors, 0.38 ms each)"));
}

TEST_F(SensorDumpTest, ThermalStatesHaveNamesAndAnUnknownOneIsNominal) {
    const std::pair<int, std::string> states[] = {{0, "Nominal"},  {1, "Fair"},    {2, "Serious"},
                                                  {3, "Critical"}, {4, "Nominal"}, {-1, "Nominal"}};
    for (const auto& [state, name] : states) {
        platform.fake.thermal.state = state;
        output.lines.clear();
        EXPECT_EQ(run(), 1);
        EXPECT_TRUE(printed("thermal:    " + name)) << state;
    }
}

TEST_F(SensorDumpTest, OnlyAVirtualMachineIsCalledOne) {
    for (const bool isVirtual : {false, true}) {
        platform.fake.system.isVirtual = isVirtual;
        output.lines.clear();
        EXPECT_EQ(run(), 1);
        EXPECT_EQ(linesStarting("            \u26A0\uFE0E running in a virtual machine"), isVirtual ? 1U : 0U);
    }
}

TEST_F(SensorDumpTest, TheBackendsSummaryGoesToTheLogAndTheReportToTheOutput) {
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(platform.fake.recordingLog.lines, (Lines{"sensor: unavailable — no thermal HID services on this Mac"}));
    EXPECT_EQ(output.lines.front(), "=== Thermopix sensor dump ===");
}

TEST_F(SensorDumpTest, EverySectionButTheCostsComesFromOneReading) {
    platform.fake.hid.services = {{"CPU", 50.0}};
    EXPECT_EQ(run(), 0);
    // One list, then a warm-up and 30 passes of six sources, of the one family and of all sensors.
    EXPECT_EQ(platform.countingLoader.reads, 1 + 31 * (6 + 1 + 1));
}

TEST_F(SensorDumpTest, LeavesNoObjectOfTheSystemBehind) {
    platform.fake.hid.services = laptopServices();
    const auto before = ScriptedHIDLoader::liveObjects;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(ScriptedHIDLoader::liveObjects, before);
}

}  // namespace
}  // namespace thermopix
