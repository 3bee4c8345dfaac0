#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "fakes/TemporaryFolder.h"
#include "fakes/TestFiles.h"
#include "program/Program.h"

namespace thermopix {
namespace {

namespace fs = std::filesystem;

std::string machineTree(const std::string& machine) {
    return testFile("fixtures/sysfs") / machine;
}

class HeadlessModesTest : public testing::Test {
protected:
    // No bus, no display: nothing but a home and a machine.
    [[nodiscard]] Program::Environment on(const std::string& machine) const {
        return {{"HOME", home.path().string()}, {"THERMOPIX_SYSFS_ROOT", machineTree(machine)}};
    }

    TemporaryFolder home;
};

TEST_F(HeadlessModesTest, ReportsTheSensorsOfALaptop) {
    const auto result = Program::run({"--sensors"}, on("intel-laptop"));
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.output.starts_with("=== Thermopix sensor dump ===\n")) << result.output;
    EXPECT_NE(result.output.find("\n--- CPU  "), std::string::npos) << result.output;
}

TEST_F(HeadlessModesTest, DiagnosesAMachineWithoutSensors) {
    const auto result = Program::run({"--sensors"}, on("virtual-machine"));
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.output.find("No thermal sensor could be read."), std::string::npos) << result.output;
}

TEST_F(HeadlessModesTest, PassesItsSelfTestOnALaptop) {
    const auto result = Program::run({"--acceptance-selftest"}, on("intel-laptop"));
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.output.ends_with("\nPASSED\n")) << result.output;
}

TEST_F(HeadlessModesTest, FailsItsSelfTestWithoutSensors) {
    const auto result = Program::run({"--acceptance-selftest"}, on("virtual-machine"));
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.output.find("\nFAILED ("), std::string::npos) << result.output;
}

TEST_F(HeadlessModesTest, PrefersTheSensorReportToEveryOtherMode) {
    const auto result = Program::run({"--export-web-assets", "--sensors"}, on("intel-laptop"));
    EXPECT_TRUE(result.output.starts_with("=== Thermopix sensor dump ===\n")) << result.output;
    EXPECT_FALSE(fs::exists("--sensors"));
    const auto both = Program::run({"--acceptance-selftest", "--sensors"}, on("intel-laptop"));
    EXPECT_TRUE(both.output.starts_with("=== Thermopix sensor dump ===\n")) << both.output;
}

TEST_F(HeadlessModesTest, ExportsTwentyOneFiles) {
    const auto folder = home.path() / "deep" / "export";
    const auto result = Program::run({"--export-web-assets", folder.string()}, on("virtual-machine"));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "wrote glyphs.json and 20 PNGs to " + folder.string() + "\n");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 21);
}

TEST_F(HeadlessModesTest, SaysWhenItCannotExport) {
    const auto result = Program::run({"--export-web-assets", "/dev/null/export"}, on("virtual-machine"));
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.output.starts_with("cannot create /dev/null/export: ")) << result.output;
}

TEST_F(HeadlessModesTest, CapturesAMachineThatPassesTheSelfTest) {
    const auto folder = home.path() / "captured";
    const auto result = Program::run({"--capture-sensors", folder.string()}, on("intel-laptop"));
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.output.starts_with("captured ")) << result.output;
    const auto replayed = Program::run({"--acceptance-selftest"},
                                       {{"HOME", home.path().string()}, {"THERMOPIX_SYSFS_ROOT", folder.string()}});
    EXPECT_TRUE(replayed.output.ends_with("\nPASSED\n")) << replayed.output;
    const auto again = Program::run({"--capture-sensors", folder.string()}, on("intel-laptop"));
    EXPECT_EQ(again.status, 1);
    EXPECT_TRUE(again.output.starts_with("cannot capture to ")) << again.output;
}

TEST_F(HeadlessModesTest, ShowsHelpAndVersionOnStandardOutput) {
    const auto help = Program::run({"--help"}, on("virtual-machine"));
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.output.find("--export-web-assets"), std::string::npos) << help.output;
    EXPECT_EQ(help.errors, "");
    const auto version = Program::run({"--version"}, on("virtual-machine"));
    EXPECT_EQ(version.status, 0);
    EXPECT_TRUE(version.output.starts_with("Thermopix " THERMOPIX_VERSION " (")) << version.output;
}

TEST_F(HeadlessModesTest, LeavesNoSettingsBehind) {
    for (const auto* mode : {"--sensors", "--acceptance-selftest", "--help", "--version"}) {
        const auto result = Program::run({mode}, on("intel-laptop"));
        EXPECT_EQ(result.status, 0) << mode;
    }
    EXPECT_TRUE(fs::is_empty(home.path()));
}

class TerminalModeTest : public HeadlessModesTest {};

TEST_F(TerminalModeTest, PrintsTheReadingAsOneLineAndEndsOnSignals) {
    for (const int number : {SIGINT, SIGTERM}) {
        Program program({"--terminal"}, on("intel-laptop"));
        EXPECT_TRUE(program.waitForOutput("degrees Celsius")) << program.errors();
        program.signal(number);
        const auto result = program.finish();
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 1) << result.output;
    }
}

TEST_F(TerminalModeTest, IsWhereTheReadoutGoesWithoutDisplayAndTray) {
    Program program({}, on("intel-laptop"));
    EXPECT_TRUE(program.waitForOutput("degrees Celsius")) << program.errors();
    program.signal(SIGTERM);
    EXPECT_EQ(program.finish().status, 0);
}

TEST_F(TerminalModeTest, SaysWhenThereIsNoReading) {
    Program program({"--terminal"}, on("virtual-machine"));
    EXPECT_TRUE(program.waitForOutput("Temperature unavailable. Thermal state nominal.\n")) << program.errors();
    program.signal(SIGTERM);
    EXPECT_EQ(program.finish().status, 0);
}

TEST_F(TerminalModeTest, NamesAnUnknownOptionAndGoesOn) {
    Program program({"--terminal", "--warp-speed"}, on("intel-laptop"));
    EXPECT_TRUE(program.waitForErrors("--warp-speed")) << program.errors();
    EXPECT_TRUE(program.waitForOutput("degrees Celsius")) << program.errors();
    program.signal(SIGTERM);
    EXPECT_EQ(program.finish().status, 0);
}

TEST_F(TerminalModeTest, StartsNormallyWhenTheExportHasNoDirectory) {
    Program program({"--export-web-assets"}, on("intel-laptop"));
    EXPECT_TRUE(program.waitForOutput("degrees Celsius")) << program.errors();
    program.signal(SIGTERM);
    EXPECT_EQ(program.finish().status, 0);
}

TEST_F(TerminalModeTest, WritesTheWholeRecordOfSettingsAtLaunch) {
    Program program({"--terminal"}, on("intel-laptop"));
    EXPECT_TRUE(program.waitForOutput("degrees Celsius")) << program.errors();
    program.signal(SIGTERM);
    EXPECT_EQ(program.finish().status, 0);
    EXPECT_TRUE(fs::exists(home.path() / ".config" / "thermopix" / "preferences.v1"));
}

TEST_F(TerminalModeTest, KeepsToTheSuiteOfAnInterfaceTest) {
    Program program({"--terminal", "--uitest-fake-sensor", "--uitest-defaults-suite", "trial"}, on("virtual-machine"));
    EXPECT_TRUE(program.waitForOutput("61 degrees Celsius, comfy\n")) << program.output() << program.errors();
    program.signal(SIGTERM);
    EXPECT_EQ(program.finish().status, 0);
    EXPECT_TRUE(fs::exists(home.path() / ".config" / "thermopix" / "suites" / "trial" / "preferences.v1"));
    EXPECT_FALSE(fs::exists(home.path() / ".config" / "thermopix" / "preferences.v1"));
}

}  // namespace
}  // namespace thermopix
