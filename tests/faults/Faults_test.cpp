// The program on a machine whose devices, disk and libraries are slow, full or broken. What is held stays held until
// the test lets go, so these tests show the order of things and not how long they take.
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "faults/Faults.h"
#include "platform/linux/tray/TestBus.h"
#include "platform/linux/tray/TestTrayHost.h"
#include "program/Program.h"
#include "program/ProgramHome.h"

namespace thermopix {
namespace {

constexpr const char* firstSensor = "hwmon0/temp1_input";
constexpr const char* preferences = ".config/thermopix/preferences.v1";

class FaultsTest : public testing::Test {
protected:
    void start() {
        const std::string bus = g_getenv("DBUS_SESSION_BUS_ADDRESS");
        auto environment = faults.environment();
        environment.insert({{"HOME", home.path().string()},
                            {"THERMOPIX_SYSFS_ROOT", home.path("sys").string()},
                            {"DBUS_SESSION_BUS_ADDRESS", bus},
                            {"DBUS_SYSTEM_BUS_ADDRESS", bus}});
        program = std::make_unique<Program>(std::vector<std::string>{}, environment);
        ASSERT_TRUE(host.waitForRegistration()) << program->errors();
    }

    void addMonitor(int number, const std::string& chip, const std::string& label, int celsius) const {
        const auto folder = "sys/class/hwmon/hwmon" + std::to_string(number) + "/";
        home.write(folder + "name", chip + "\n");
        home.write(folder + "temp1_label", label + "\n");
        home.write(folder + "temp1_input", std::to_string(celsius) + "000\n");
    }

    [[nodiscard]] bool untilHeld(const char* call, const std::string& pathEnd) const {
        return runUntil([&] { return faults.hasHeld(call, pathEnd); });
    }
    [[nodiscard]] bool untilTitleHas(const std::string& text) const {
        return runUntil([&] { return host.text("Title").find(text) != std::string::npos; });
    }

    /// What a user notices of a thread that waits.
    void expectAnswers() {
        EXPECT_FALSE(host.pictures().empty());
        host.aboutToShowMenu();
        host.click(host.entry("Segment").id);
        host.click(host.entry("Quit Thermopix").id);
        EXPECT_TRUE(runUntil([this] { return program->hasEnded(); }));
        EXPECT_EQ(program->finish().status, 0);
    }

    ProgramHome home;
    Faults faults;
    TestTrayHost host;
    std::unique_ptr<Program> program;
};

TEST_F(FaultsTest, SensorsThatDoNotAnswerHoldNothingElseUp) {
    addMonitor(1, "nvme", "Composite", 40);
    addMonitor(2, "k10temp", "Tctl", 50);
    addMonitor(3, "amdgpu", "edge", 60);
    faults.set("read temp1_input held\n");
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_TRUE(untilHeld("read", firstSensor));
    expectAnswers();
    EXPECT_NE(home.read(preferences).find(R"("style":"segment")"), std::string::npos);
}

TEST_F(FaultsTest, ASignalEndsTheProgramWhileAReadIsHeld) {
    faults.set("read temp1_input held\n");
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_TRUE(untilHeld("read", firstSensor));
    program->signal(SIGTERM);
    EXPECT_TRUE(runUntil([this] { return program->hasEnded(); }));
    EXPECT_EQ(program->finish().status, 0);
}

TEST_F(FaultsTest, AProcessorThatAnswersLateIsShownAndNoOtherSensorInItsPlace) {
    addMonitor(1, "amdgpu", "edge", 33);
    faults.set("read hwmon0/temp1_input held\n");
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_TRUE(untilHeld("read", firstSensor));
    EXPECT_EQ(host.text("Title").find("33"), std::string::npos);
    faults.set("");
    faults.openGate();
    EXPECT_TRUE(untilTitleHas("57 degrees"));
}

TEST_F(FaultsTest, OneSensorThatDoesNotAnswerLeavesTheOthersTheirHottest) {
    home.write("sys/class/hwmon/hwmon0/temp2_label", "Core 0\n");
    home.write("sys/class/hwmon/hwmon0/temp2_input", "61000\n");
    faults.set("read temp1_input held\n");
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_TRUE(untilTitleHas("61 degrees"));
    EXPECT_TRUE(untilHeld("read", firstSensor));
}

TEST_F(FaultsTest, ADiskThatDoesNotAnswerHoldsNothingElseUpAndTheEndNotForLong) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_TRUE(untilTitleHas("57 degrees"));
    faults.set("fsync .config/thermopix held\n");
    host.click(host.entry("Fahrenheit").id);
    ASSERT_TRUE(untilHeld("fsync", ""));
    EXPECT_TRUE(untilTitleHas("135 degrees Fahrenheit"));
    expectAnswers();
}

TEST_F(FaultsTest, TheLastChoiceIsStoredWhenTheDiskAnswersAgain) {
    ASSERT_NO_FATAL_FAILURE(start());
    faults.set("fsync .config/thermopix held\n");
    host.click(host.entry("Fahrenheit").id);
    ASSERT_TRUE(untilHeld("fsync", ""));
    host.click(host.entry("Segment").id);
    host.click(host.entry("Ghost").id);
    faults.openGate();
    EXPECT_TRUE(runUntil([this] {
        const auto stored = home.read(preferences);
        return stored.find(R"("unit":"fahrenheit","style":"segment")") != std::string::npos &&
               stored.find(R"("pet":"ghost")") != std::string::npos;
    })) << home.read(preferences);
}

TEST_F(FaultsTest, ADiskThatIsFullWhenTheProgramEndsCostsNoOldSettings) {
    home.write(preferences, R"({"unit":"fahrenheit"})");
    faults.set("write .config/thermopix ENOSPC\n");
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_TRUE(untilTitleHas("135 degrees Fahrenheit"));
    host.click(host.entry("Celsius").id);
    ASSERT_TRUE(untilTitleHas("57 degrees Celsius"));
    program->signal(SIGTERM);
    EXPECT_TRUE(runUntil([this] { return program->hasEnded(); }));
    EXPECT_EQ(program->finish().status, 0);
    EXPECT_EQ(home.read(preferences), R"({"unit":"fahrenheit"})");
}

TEST_F(FaultsTest, AnUndisturbedProgramPassesTheInjector) {
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_TRUE(untilTitleHas("57 degrees"));
    expectAnswers();
    EXPECT_NE(home.read(preferences).find(R"("style":"segment")"), std::string::npos);
}

}  // namespace
}  // namespace thermopix
