#include "platform/linux/sensors/SysfsHIDSymbols.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <new>

#include "platform/linux/sensors/HeldChannel.h"
#include "platform/linux/sensors/SysfsMachine.h"

namespace {
std::int64_t allocations = 0;
}  // namespace

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations;
    return std::malloc(size == 0 ? 1 : size);
}
void* operator new(std::size_t size) {
    if (void* const memory = ::operator new(size, std::nothrow)) {
        return memory;
    }
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}

namespace thermopix {
namespace {

using Names = std::vector<std::string>;
constexpr auto nothing = std::nullopt;

TEST(SysfsHIDSymbols, ATreeThatDoesNotExistPublishesNothing) {
    EXPECT_EQ(SysfsSensors("/nowhere").names(), Names());
    EXPECT_EQ(SysfsSensors(machine("virtual-machine")).names(), Names());
}

TEST(SysfsHIDSymbols, AServiceHasNoPropertyButItsName) {
    const SysfsSensors sensors(machine("arm-board"));
    auto* const service = sensors.services().front().get();
    EXPECT_FALSE(sensors.symbols().copyProperty(service, "Manufacturer").has_value());
    EXPECT_TRUE(sensors.symbols().copyProperty(service, "Product").has_value());
}

TEST(SysfsHIDSymbols, ReadingsAreInDegrees) {
    const SysfsSensors sensors(machine("amd-desktop"));
    EXPECT_DOUBLE_EQ(sensors.read("CPU Tctl").value(), 61.625);
    EXPECT_DOUBLE_EQ(sensors.read("SSD nvme 2 Sensor 1").value(), 52.85);
    EXPECT_DOUBLE_EQ(sensors.read("nct6798 AUXTIN0").value(), -62.0);
}

TEST(SysfsHIDSymbols, AReadingIsOnePositionedReadOfAFileThatStaysOpen) {
    CountingFileAccess access;
    const SysfsSensors sensors(machine("intel-laptop"), nullptr, access);
    const auto opened = access.opened;
    EXPECT_EQ(opened, 11);
    access.reads = 0;
    for (int poll = 0; poll < 10; ++poll) {
        for (const auto& reading : sensors.readAll()) {
            EXPECT_TRUE(reading.has_value());
        }
    }
    EXPECT_EQ(access.reads, 10 * 11);
    EXPECT_EQ(access.opened, opened);
}

TEST(SysfsHIDSymbols, OnlyTheWantedSensorIsReadWithItsPowerStateAndItsFaultFile) {
    struct Case {
        std::string_view machine;
        std::string_view sensor;
        std::optional<double> reading;
        Names files;
    };
    for (const auto& [name, sensor, reading, files] :
         {Case{"intel-laptop", "CPU Core 1", 57.0, {"temp3_input"}},
          Case{"amd-desktop", "GPU MTR Temp edge", 47.0, {"runtime_status", "temp1_input"}},
          Case{"amd-desktop", "nct6798 C-PUTIN", 118.0, {"temp2_fault", "temp2_input"}},
          // Its power management is switched off.
          Case{"amd-desktop", "SSD drivetemp", 33.0, {"temp1_input"}},
          // It sleeps.
          Case{"hybrid-laptop", "GPU MTR Temp nouveau", nothing, {"runtime_status"}}}) {
        CountingFileAccess access;
        EXPECT_EQ(SysfsSensors(machine(name), nullptr, access).read(sensor), reading) << sensor;
        EXPECT_EQ(access.readFiles, files) << sensor;
    }
    EXPECT_EQ(SysfsSensors(machine("hybrid-laptop")).read("CPU Package id 0"), 62.0);
}

TEST(SysfsHIDSymbols, AReadingAllocatesNothing) {
    const SysfsSensors sensors(machine("amd-desktop"));
    const auto& read = sensors.symbols();
    const auto before = allocations;
    double sum = 0;
    for (const auto& service : sensors.services()) {
        const auto event = read.copyEvent(service.get(), 15, 0, 0);
        sum += read.getFloat(event.get(), 983040);
    }
    EXPECT_EQ(allocations, before);
    EXPECT_GT(sum, 500.0);
    EXPECT_GT(before, 0);
}

TEST(SysfsHIDSymbols, ADeviceIsReadOnlyWhileItsPowerStateSaysItRuns) {
    const TemporaryTree tree;
    const auto status = tree.write("devices/pci/card/power/runtime_status", "suspended\n");
    tree.addMonitor(0, "devices/pci/card", "amdgpu", {{"edge", "47000\n"}});
    tree.write("devices/pci/card/power/control", "auto\n");
    CountingFileAccess access;
    const SysfsSensors sensors(tree.path(), nullptr, access);
    const auto readWhen = [&](std::string_view text) {
        tree.write("devices/pci/card/power/runtime_status", text);
        return sensors.read("GPU MTR Temp edge");
    };
    for (const auto text : {"suspended\n", "suspending\n", "error\n", ""}) {
        EXPECT_EQ(readWhen(text), nothing) << text;
        EXPECT_EQ(readWhen("active\n"), 47.0);
        EXPECT_EQ(readWhen("resuming\n"), 47.0);
    }
    access.failing = {std::filesystem::canonical(status)};
    EXPECT_EQ(readWhen("active\n"), nothing);
}

TEST(SysfsHIDSymbols, ASensorThatReportsAFaultHasNoReadingWhileItDoes) {
    const TemporaryTree tree;
    tree.addMonitor(0, "devices/platform/board", "it8728", {{"", "45000\n"}});
    const auto fault = "devices/platform/board/hwmon/hwmon0/temp1_fault";
    tree.write(fault, "1\n");
    const SysfsSensors sensors(tree.path());
    EXPECT_EQ(sensors.read("it8728"), nothing);
    tree.write(fault, "0\n");
    EXPECT_EQ(sensors.read("it8728"), 45.0);
    tree.write(fault, "garbage\n");
    EXPECT_EQ(sensors.read("it8728"), 45.0);
}

TEST(SysfsHIDSymbols, ABadChannelFailsAlone) {
    const SysfsSensors sensors(machine("broken-machine"));
    EXPECT_EQ(sensors.read("CPU Package id 0"), 51.0);
    EXPECT_EQ(sensors.read("CPU Core 10"), 53.0);
    for (const auto name :
         {"CPU Core 0", "CPU Core 1", "CPU Core 4", "CPU Core 5", "CPU Core 6", "CPU Core 7", "CPU Core 8",
          "CPU Core 9", "CPU Core 11", "CPU Core 12", "CPU Core 13", "CPU Folder", "SOC MTR Temp acpitz"}) {
        EXPECT_EQ(sensors.read(name), nothing) << name;
    }
    EXPECT_EQ(sensors.read("CPU Core 3"), -40.0);  // the plausible band is the caller's
    EXPECT_DOUBLE_EQ(sensors.read("CPU Core 2").value(), 9223372036854775.807);
    const auto names = sensors.names();
    EXPECT_EQ(std::count(names.begin(), names.end(), "CPU Dangling"), 0);
}

TEST(SysfsHIDSymbols, WhatAppearsIsFoundByRediscoveryAndWhatVanishesFailsAloneUntilThen) {
    const TemporaryTree tree;
    CountingFileAccess access;
    SysfsSensors sensors(tree.path(), nullptr, access);
    EXPECT_EQ(sensors.names(), Names());
    tree.addMonitor(7, "devices/platform/coretemp.0", "coretemp", {{"Core 0", "41000"}});
    sensors.discover();
    EXPECT_EQ(sensors.names(), Names{"CPU Core 0"});
    tree.addMonitor(1, "devices/usb/drive", "drivetemp", {{"", "35000"}});
    sensors.discover();
    EXPECT_EQ(sensors.names(), (Names{"CPU Core 0", "SSD drivetemp"}));
    EXPECT_EQ(sensors.read("SSD drivetemp"), 35.0);

    access.failing = {std::filesystem::canonical(tree.path() / "devices/usb/drive/hwmon/hwmon1/temp1_input")};
    EXPECT_EQ(sensors.read("SSD drivetemp"), nothing);
    EXPECT_EQ(sensors.read("CPU Core 0"), 41.0);
    tree.remove("devices/usb");
    tree.remove("class/hwmon/hwmon1");
    sensors.discover();
    EXPECT_EQ(sensors.names(), Names{"CPU Core 0"});
    EXPECT_EQ(sensors.read("CPU Core 0"), 41.0);
}

/// Files whose reads are held back until a test lets them go.
class HeldFileAccess final : public FileAccess {
public:
    ssize_t readFromStart(int descriptor, std::span<char> buffer) override {
        std::unique_lock lock(mutex_);
        ++reads_;
        changed_.notify_all();
        changed_.wait(lock, [this] { return isReleased_; });
        return FileAccess::readFromStart(descriptor, buffer);
    }
    void awaitRead() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return reads_ > 0; });
    }
    void release() {
        const std::lock_guard lock(mutex_);
        isReleased_ = true;
        changed_.notify_all();
    }
    [[nodiscard]] int reads() {
        const std::lock_guard lock(mutex_);
        return reads_;
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    int reads_ = 0;
    bool isReleased_ = false;
};

TEST(SysfsHIDSymbols, RediscoveryDropsNoReadThatIsUnderWay) {
    const TemporaryTree tree;
    tree.addMonitor(0, "devices/platform/coretemp.0", "coretemp", {{"Core 0", "41000"}});
    HeldFileAccess access;
    TestClock clock;
    SensorPolling polling(clock);
    SysfsSensors sensors(tree.path(), nullptr, access, polling);
    const auto polls = polling.poll({.interval = std::chrono::seconds(2), .onLate = {}, .onChange = {}});
    EXPECT_EQ(sensors.read("CPU Core 0"), nothing);
    EXPECT_TRUE(sensors.isAwaited(0));
    access.awaitRead();

    sensors.discover();
    EXPECT_EQ(sensors.read("CPU Core 0"), nothing);
    EXPECT_TRUE(sensors.isAwaited(0));
    EXPECT_EQ(access.reads(), 1);

    access.release();
    std::optional<double> celsius;
    while (!(celsius = sensors.read("CPU Core 0"))) {
        std::this_thread::yield();
    }
    EXPECT_EQ(celsius, 41.0);
    EXPECT_FALSE(sensors.isAwaited(0));
}

TEST(SysfsHIDSymbols, DevicesThatComeOrGoAreSeenByALookAtTheFolders) {
    const TemporaryTree tree;
    tree.addMonitor(0, "devices/platform/coretemp.0", "coretemp", {{"Core 0", "41000"}});
    CountingFileAccess access;
    SysfsHIDSymbols symbols(tree.path(), nullptr, access);
    const auto table = symbols.load().resolved.value();
    const auto list = [&] { static_cast<void>(table.copyServices(nullptr)); };
    list();
    EXPECT_FALSE(symbols.hasChanged());
    const auto opened = access.opened;

    tree.remove("class/hwmon/hwmon0");
    EXPECT_TRUE(symbols.hasChanged());
    list();
    EXPECT_FALSE(symbols.hasChanged());
    tree.addMonitor(3, "devices/platform/coretemp.0", "coretemp", {{"Core 0", "41000"}});
    EXPECT_TRUE(symbols.hasChanged());
    EXPECT_EQ(access.opened, opened) << "A look opens no sensor";
    list();
    tree.addZone(4, "acpitz", "30000");
    EXPECT_TRUE(symbols.hasChanged());
}

TEST(SysfsHIDSymbols, ADriverThatWasTakenOutIsToldAsAChange) {
    const TemporaryTree tree;
    tree.addMonitor(0, "devices/platform/coretemp.0", "coretemp", {{"Core 0", "41000"}, {"Core 1", "42000"}});
    CountingFileAccess access;
    TestClock clock;
    int changes = 0;
    SensorPolling polling(clock);
    const SysfsSensors sensors(tree.path(), nullptr, access, polling);
    const auto polls =
        polling.poll({.interval = std::chrono::seconds(2), .onLate = {}, .onChange = [&changes] { ++changes; }});
    while (sensors.read("CPU Core 0") != 41.0 || sensors.read("CPU Core 1") != 42.0) {
        std::this_thread::yield();
    }
    clock.advance(SensorPolling::betweenDiscoveries);
    const auto folder = tree.path() / "class/hwmon/hwmon0";
    access.failing = {std::filesystem::canonical(folder / "temp1_input"),
                      std::filesystem::canonical(folder / "temp2_input")};
    EXPECT_EQ(sensors.read("CPU Core 0"), nothing);
    EXPECT_EQ(sensors.read("CPU Core 1"), nothing);
    EXPECT_EQ(changes, 1);
}

TEST(SysfsHIDSymbols, ServicesOfAnEarlierListingCanStillBeRead) {
    const TemporaryTree tree;
    tree.addMonitor(0, "devices/platform/coretemp.0", "coretemp", {{"Core 0", "41000"}});
    const SysfsSensors sensors(tree.path());
    const auto later = sensors.symbols().copyServices(nullptr);
    ASSERT_EQ(later->size(), 1U);
    EXPECT_NE(later->front().get(), sensors.services().front().get());
    EXPECT_EQ(sensors.read("CPU Core 0"), 41.0);
}

TEST(SysfsHIDSymbols, ServicesCloseTheirFiles) {
    const auto openFiles = [] { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); };
    const auto before = openFiles();
    {
        SysfsSensors sensors(machine("amd-desktop"));
        EXPECT_GE(openFiles(), before + 16);
        sensors.discover();
    }
    EXPECT_EQ(openFiles(), before);
}

TEST(SysfsHIDSymbols, AZoneWhoseTemperatureAMonitorPublishesIsLeftOut) {
    const TemporaryTree tree;
    tree.addZone(0, "by-name", "40000\n");
    const auto byDevice = tree.addZone(1, "by-device", "40000\n");
    const auto byChild = tree.addZone(2, "by-child", "40000\n");
    tree.addZone(3, "by-nothing", "40000\n");
    tree.addMonitor(0, "devices/platform/elsewhere", "by_name", {{"", "40000"}});
    tree.write("devices/virtual/hwmon/hwmon1/name", "other\n");
    tree.write("devices/virtual/hwmon/hwmon1/temp1_input", "40000\n");
    tree.link("devices/virtual/hwmon/hwmon1/device", byDevice);
    tree.link("class/hwmon/hwmon1", "devices/virtual/hwmon/hwmon1");
    tree.write(byChild / "hwmon2/name", "child\n");
    tree.write(byChild / "hwmon2/temp1_input", "40000\n");
    tree.link("class/hwmon/hwmon2", byChild / "hwmon2");
    EXPECT_EQ(SysfsSensors(tree.path()).names(), (Names{"by_name", "by_nothing", "child", "other"}));
}

TEST(SysfsHIDSymbols, TheProcessorPackageIsOneSensorWhicheverDriverIsThere) {
    const TemporaryTree tree;
    tree.addZone(0, "x86_pkg_temp", "52000\n");
    EXPECT_EQ(SysfsSensors(tree.path()).names(), Names{"CPU x86_pkg_temp"});
    tree.addMonitor(0, "devices/platform/coretemp.0", "coretemp", {{"Package id 0", "52000"}});
    EXPECT_EQ(SysfsSensors(tree.path()).names(), Names{"CPU Package id 0"});
}

TEST(SysfsHIDSymbols, AMonitorWithoutTemperaturesHidesNoZone) {
    const TemporaryTree tree;
    tree.write("class/hwmon/hwmon0/name", "cpu_thermal\n");
    tree.write("class/hwmon/hwmon0/fan1_input", "1200\n");
    tree.addZone(0, "cpu-thermal", "52000\n");
    const SysfsSensors sensors(tree.path());
    EXPECT_EQ(sensors.names(), Names{"CPU cpu_thermal"});
    EXPECT_EQ(sensors.read("CPU cpu_thermal"), 52.0);
}

}  // namespace
}  // namespace thermopix
