#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "fakes/TemporaryFolder.h"
#include "fakes/TestFiles.h"
#include "program/Program.h"
#include "program/ProgramHome.h"

namespace thermopix {
namespace {

namespace fs = std::filesystem;

class HeadlessModesTest : public testing::Test {
protected:
    // No bus, no display: nothing but a home and a machine.
    [[nodiscard]] Program::Environment on(const std::string& machine) const {
        return {{"HOME", home.path().string()}, {"THERMOPIX_SYSFS_ROOT", testFile("fixtures/sysfs") / machine}};
    }

    /// Runs it until it has printed this, and ends it by a signal.
    Program::Result shows(const std::string& text, const std::vector<std::string>& arguments,
                          const std::string& machine = "intel-laptop", int signal = SIGTERM) const {
        Program program(arguments, on(machine));
        EXPECT_TRUE(program.waitForOutput(text)) << program.output() << program.errors();
        program.signal(signal);
        auto result = program.finish();
        EXPECT_EQ(result.status, 0);
        return result;
    }

    TemporaryFolder home;
};

TEST_F(HeadlessModesTest, ReportOnAMachineInStatusAndText) {
    struct Case {
        const char* mode;
        const char* machine;
        int status;
        const char* text;
    };
    for (const auto& [mode, machine, status, text] :
         {Case{"--sensors", "intel-laptop", 0, "=== Thermopix sensor dump ==="},
          Case{"--sensors", "intel-laptop", 0, "\n--- CPU  "},
          Case{"--sensors", "virtual-machine", 1, "No thermal sensor could be read."},
          Case{"--acceptance-selftest", "intel-laptop", 0, "\nPASSED\n"},
          Case{"--acceptance-selftest", "virtual-machine", 1, "\nFAILED ("},
          Case{"--help", "virtual-machine", 0, "--export-web-assets"},
          Case{"-h", "virtual-machine", 0, "--export-web-assets"},
          Case{"--version", "virtual-machine", 0, "Thermopix " THERMOPIX_VERSION " ("}}) {
        const auto result = Program::run({mode}, on(machine));
        EXPECT_EQ(result.status, status) << mode;
        EXPECT_NE(result.output.find(text), std::string::npos) << result.output;
    }
    EXPECT_TRUE(fs::is_empty(home.path())) << "settings were left behind";
}

TEST_F(HeadlessModesTest, PrefersTheSensorReportToEveryOtherMode) {
    for (const char* other : {"--export-web-assets", "--acceptance-selftest"}) {
        const auto result = Program::run({other, "--sensors"}, on("intel-laptop"));
        EXPECT_TRUE(result.output.starts_with("=== Thermopix sensor dump ===\n")) << result.output;
    }
    EXPECT_FALSE(fs::exists("--sensors"));
}

TEST_F(HeadlessModesTest, ExportsTwentyOneFilesOrSaysWhenItCannot) {
    const auto folder = home.path("deep/export");
    const auto result = Program::run({"--export-web-assets", folder.string()}, on("virtual-machine"));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "wrote glyphs.json and 20 PNGs to " + folder.string() + "\n");
    EXPECT_EQ(home.entries("deep/export").size(), 21U);
    const auto failed = Program::run({"--export-web-assets", "/dev/null/export"}, on("virtual-machine"));
    EXPECT_EQ(failed.status, 1);
    EXPECT_TRUE(failed.output.starts_with("cannot create /dev/null/export: ")) << failed.output;
}

TEST_F(HeadlessModesTest, CapturesAMachineThatPassesTheSelfTest) {
    const auto folder = home.path("captured");
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

TEST_F(HeadlessModesTest, EndWithOneWhenTheirOutputCannotBeWritten) {
    int number = 0;
    for (const char* output : {">/dev/full", ">&-", "<&- >&- 2>&-"}) {
        const auto folder = home.path("written" + std::to_string(++number));
        for (const std::vector<std::string>& mode :
             std::vector<std::vector<std::string>>{{"--sensors"},
                                                   {"--acceptance-selftest"},
                                                   {"--help"},
                                                   {"--version"},
                                                   {"--export-web-assets", folder / "art"},
                                                   {"--capture-sensors", folder / "machine"}}) {
            EXPECT_EQ(Program::run(mode, on("intel-laptop"), output).status, 1) << mode[0] << " " << output;
        }
        EXPECT_TRUE(fs::exists(folder / "art/glyphs.json"));
        EXPECT_TRUE(fs::exists(folder / "machine/class/hwmon"));
    }
}

TEST_F(HeadlessModesTest, ShowHelpOnStandardOutputOnly) {
    EXPECT_EQ(Program::run({"--help"}, on("virtual-machine")).errors, "");
}

class TerminalModeTest : public HeadlessModesTest {};

TEST_F(TerminalModeTest, PrintsTheReadingAsOneLineAndEndsOnSignals) {
    for (const int number : {SIGINT, SIGTERM}) {
        const auto result = shows("degrees Celsius", {"--terminal"}, "intel-laptop", number);
        EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 1) << result.output;
    }
    EXPECT_TRUE(fs::exists(home.path(".config/thermopix/preferences.v1"))) << "the record is written at launch";
}

TEST_F(TerminalModeTest, IsWhereTheReadoutGoesWithoutDisplayAndTray) {
    shows("degrees Celsius", {});
    shows("degrees Celsius", {"--export-web-assets"});  // has no directory
    shows("Temperature unavailable. Thermal state nominal.\n", {"--terminal"}, "virtual-machine");
    const auto result = shows("degrees Celsius", {"--terminal", "--warp-speed"});
    EXPECT_NE(result.errors.find("--warp-speed"), std::string::npos) << result.errors;
}

TEST_F(TerminalModeTest, KeepsToTheSuiteOfAnInterfaceTest) {
    shows("61 degrees Celsius, comfy\n", {"--terminal", "--uitest-fake-sensor", "--uitest-defaults-suite", "trial"},
          "virtual-machine");
    EXPECT_TRUE(fs::exists(home.path(".config/thermopix/suites/trial/preferences.v1")));
    EXPECT_FALSE(fs::exists(home.path(".config/thermopix/preferences.v1")));
}

/// A machine with a processor and an NVIDIA card that is awake, and a stand-in for the library that reads it.
class NvidiaMachineTest : public testing::Test {
protected:
    NvidiaMachineTest() {
        const std::string card = "sys/devices/pci0000:00/0000:01:00.0/";
        home.write(card + "vendor", "0x10de\n");
        home.write(card + "class", "0x030000\n");
        home.write(card + "power/runtime_status", "active\n");
        home.link("sys/bus/pci/devices/0000:01:00.0", home.path(card));
    }

    [[nodiscard]] Program::Environment machine() const {
        return {{"HOME", home.path().string()},
                {"THERMOPIX_SYSFS_ROOT", home.path("sys").string()},
                {"LD_LIBRARY_PATH", THERMOPIX_NVML_STAND_IN},
                {"THERMOPIX_NVML_STAND_IN", home.path().string()}};
    }

    ProgramHome home;
};

TEST_F(NvidiaMachineTest, TheReportHasTheCardWhereItsLibraryAnswers) {
    const auto whole = Program::run({"--sensors"}, machine());
    EXPECT_NE(whole.output.find("\nsensors:    2 readable\n"), std::string::npos) << whole.output;
    EXPECT_NE(whole.output.find("\n--- GPU  55.0 °C  (1 sensor)\n"), std::string::npos) << whole.output;

    home.write("does", "temperature crashes\n");
    const auto rest = Program::run({"--sensors"}, machine());
    EXPECT_EQ(rest.status, 0);
    EXPECT_NE(rest.output.find("\nsensors:    1 readable\n"), std::string::npos) << rest.output;
    EXPECT_NE(rest.errors.find("thermopix-nvidia-sensors has ended"), std::string::npos) << rest.errors;
}

TEST_F(NvidiaMachineTest, TheReadoutNeitherWaitsForALibraryThatHangsNorEndsWithIt) {
    home.write(".config/thermopix/preferences.v1", R"({"source": "hottest"})");
    ASSERT_EQ(::mkfifo(home.path("held").c_str(), 0600), 0);
    home.write("does", "initialise is held\ntemperature hangs\n");
    Program program({"--terminal"}, machine());
    EXPECT_TRUE(program.waitForOutput("57 degrees Celsius")) << program.output() << program.errors();
    // Opened as soon as the library is there.
    const int held = ::open(home.path("held").c_str(), O_WRONLY | O_CLOEXEC);
    program.signal(SIGTERM);
    EXPECT_EQ(program.finish().status, 0);
    ::close(held);
}

}  // namespace
}  // namespace thermopix
