#include "platform/linux/machine/SysfsCapture.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "fakes/RecordingLog.h"
#include "platform/linux/machine/LinuxSystemInformation.h"
#include "platform/linux/sensors/SysfsMachine.h"
#include "platform/linux/sensors/SysfsThermalState.h"
#include "sensing/HIDTemperatureSensor.h"

namespace thermopix {
namespace {

namespace fs = std::filesystem;

// Everything that is told about a machine, in order.
std::vector<std::string> told(const fs::path& root) {
    RecordingLog log;
    SysfsHIDSymbols symbols(root);
    HIDTemperatureSensor sensor(symbols, log);
    std::vector<std::string> lines{summary(sensor.availability())};
    for (const auto& [name, service] : sensor.sensors()) {
        lines.push_back(name);
    }
    for (const auto& sample : sensor.sample()) {
        lines.push_back(sample.name + " " + std::to_string(sample.celsius));
    }
    const LinuxSystemInformation system(root);
    lines.push_back(system.model());
    lines.push_back(system.processor());
    lines.push_back(std::to_string(system.isVirtualMachine()));
    lines.push_back(system.operatingSystemVersion());
    lines.push_back(std::to_string(SysfsThermalState(root).thermalState()));
    return lines;
}

std::string everyByteBelow(const fs::path& folder) {
    std::ostringstream all;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        all << entry.path().string() << "\n";
        if (entry.is_symlink()) {
            all << fs::read_symlink(entry.path()).string() << "\n";
        } else if (entry.is_regular_file() && entry.file_size() > 0) {
            all << std::ifstream(entry.path(), std::ios::binary).rdbuf() << "\n";
        }
    }
    return all.str();
}

TEST(SysfsCapture, StandsInForEveryModelledMachine) {
    for (const auto& name : modelledMachines) {
        const TemporaryTree captured;
        const auto result = SysfsCapture(machine(name)).captureTo(captured.path() / "copy");
        EXPECT_EQ(result.error, std::nullopt) << name;
        EXPECT_GT(result.fileCount, 0) << name;
        const auto replayed = told(captured.path() / "copy");
        const auto original = told(machine(name));
        ASSERT_EQ(replayed.size(), original.size()) << name;
        for (std::size_t i = 0; i < original.size(); ++i) {
            EXPECT_EQ(replayed[i], original[i]) << name;
        }
    }
}

TEST(SysfsCapture, LeavesOutWhatTellsOneMachineFromAnother) {
    const TemporaryTree tree;
    tree.addMonitor(0, "devices/virtual/bt/power_supply/hid-a0:b1:c2:d3:e4:f5-battery", "BAT0", {{"", "31000\n"}});
    tree.write("devices/virtual/bt/power_supply/hid-a0:b1:c2:d3:e4:f5-battery/serial_number", "SECRET-SERIAL\n");
    tree.write("devices/virtual/dmi/id/product_name", "Laptop\n");
    tree.write("devices/virtual/dmi/id/product_serial", "SECRET-SERIAL\n");
    tree.write("devices/virtual/dmi/id/product_uuid", "SECRET-UUID\n");
    tree.link("class/dmi/id", "devices/virtual/dmi/id");
    tree.write("capture/os-release", "PRETTY_NAME=\"System 1\"\nHOME_URL=\"https://secret-host.example\"\n");
    tree.write("capture/cpuinfo", "model name\t: Processor\nSerial\t\t: SECRET-SERIAL\n");
    const TemporaryTree captured;
    ASSERT_EQ(SysfsCapture(tree.path()).captureTo(captured.path() / "copy").error, std::nullopt);
    const auto bytes = everyByteBelow(captured.path() / "copy");
    for (const auto* secret : {"SECRET", "secret-host", "a0:b1:c2:d3:e4:f5"}) {
        EXPECT_EQ(bytes.find(secret), std::string::npos) << secret;
    }
    EXPECT_EQ(told(captured.path() / "copy"), told(tree.path()));
}

TEST(SysfsCapture, DoesNotWakeASleepingDevice) {
    const TemporaryTree tree;
    tree.addMonitor(0, "devices/pci0000:00/0000:01:00.0", "amdgpu", {{"edge", "55000\n"}});
    tree.write("devices/pci0000:00/0000:01:00.0/power/control", "auto\n");
    tree.write("devices/pci0000:00/0000:01:00.0/power/runtime_status", "suspended\n");
    const TemporaryTree captured;
    ASSERT_EQ(SysfsCapture(tree.path()).captureTo(captured.path() / "copy").error, std::nullopt);
    EXPECT_EQ(everyByteBelow(captured.path() / "copy").find("55000"), std::string::npos);
    EXPECT_EQ(told(captured.path() / "copy"), told(tree.path()));
}

TEST(SysfsCapture, DoesNotFollowLinksOutOfTheTree) {
    const TemporaryTree outside;
    outside.write("hwmon9/name", "coretemp\n");
    outside.write("hwmon9/temp1_input", "50000\n");
    const TemporaryTree tree;
    fs::create_directories(tree.path() / "class/hwmon");
    fs::create_symlink(outside.path() / "hwmon9", tree.path() / "class/hwmon/hwmon0");
    const TemporaryTree captured;
    EXPECT_EQ(SysfsCapture(tree.path()).captureTo(captured.path() / "copy").fileCount, 0);
}

TEST(SysfsCapture, TakesNothingOfFilesOutsideTheTree) {
    const TemporaryTree outside;
    outside.write("secret", "50000\n");
    const TemporaryTree tree;
    tree.write("class/hwmon/hwmon0/name", "coretemp\n");
    fs::create_symlink(outside.path() / "secret", tree.path() / "class/hwmon/hwmon0/temp1_input");
    const TemporaryTree captured;
    EXPECT_EQ(SysfsCapture(tree.path()).captureTo(captured.path() / "copy").error, std::nullopt);
    EXPECT_EQ(everyByteBelow(captured.path() / "copy").find("50000"), std::string::npos);
}

TEST(SysfsCapture, DoesNotWaitForWhoMayWriteToAPipe) {
    const TemporaryTree tree;
    tree.write("class/hwmon/hwmon0/name", "coretemp\n");
    fs::create_directory(tree.path() / "capture");
    for (const char* pipe : {"class/hwmon/hwmon0/temp1_input", "class/hwmon/hwmon0/temp1_label", "capture/cpuinfo",
                             "capture/os-release", "capture/osrelease"}) {
        ASSERT_EQ(mkfifo((tree.path() / pipe).c_str(), 0600), 0) << pipe;
    }
    const TemporaryTree captured;
    EXPECT_EQ(SysfsCapture(tree.path()).captureTo(captured.path() / "copy").error, std::nullopt);
    EXPECT_EQ(fs::file_size(captured.path() / "copy/class/hwmon/hwmon0/temp1_input"), 0U);
}

TEST(SysfsCapture, RefusesAFolderThatHoldsSomething) {
    const TemporaryTree captured;
    captured.write("mine.txt", "keep");
    const auto result = SysfsCapture(machine("intel-laptop")).captureTo(captured.path());
    EXPECT_TRUE(result.error.has_value());
    EXPECT_EQ(result.fileCount, 0);
    EXPECT_EQ(std::distance(fs::directory_iterator(captured.path()), fs::directory_iterator()), 1);
}

TEST(SysfsCapture, SaysWhyItCannotWrite) {
    EXPECT_TRUE(SysfsCapture(machine("intel-laptop")).captureTo("/dev/null/copy").error.has_value());
}

}  // namespace
}  // namespace thermopix
