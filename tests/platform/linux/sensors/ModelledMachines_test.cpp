#include <gtest/gtest.h>

#include <map>

#include "base/Enumeration.h"
#include "fakes/RecordingLog.h"
#include "platform/linux/sensors/SysfsMachine.h"
#include "platform/linux/sensors/SysfsThermalState.h"
#include "sensing/HIDTemperatureSensor.h"
#include "sensing/TemperatureMonitor.h"

namespace thermopix {
namespace {

/// The sensors of a machine as the product sees them.
class ModelledMachine {
public:
    explicit ModelledMachine(std::filesystem::path root, FileAccess& access = systemFileAccess())
        : loader(std::move(root), nullptr, access), sensor(loader, log) {}

    /// What the readout shows for a source at its first tick.
    std::optional<std::int64_t> shown(SensorSource source) {
        TemperatureMonitor monitor(
            sensor, [] { return ThermalPressure::nominal; }, log);
        return monitor.poll(source, TemperatureUnit::celsius).value;
    }

    RecordingLog log;
    SysfsHIDSymbols loader;
    HIDTemperatureSensor sensor;
};

using Shown = std::map<SensorSource, std::optional<std::int64_t>>;

Shown shownBy(std::string_view name) {
    ModelledMachine modelled(machine(name));
    Shown shown;
    for (const auto source : allCases<SensorSource>()) {
        shown[source] = modelled.shown(source);
    }
    return shown;
}

Shown expected(std::optional<std::int64_t> cpu, std::optional<std::int64_t> gpu, std::optional<std::int64_t> soc,
               std::optional<std::int64_t> battery, std::optional<std::int64_t> storage,
               std::optional<std::int64_t> hottest) {
    return {{SensorSource::cpu, cpu},         {SensorSource::gpu, gpu},         {SensorSource::soc, soc},
            {SensorSource::battery, battery}, {SensorSource::storage, storage}, {SensorSource::hottest, hottest}};
}

TEST(ModelledMachines, EverySourceShowsTheSensorsThatItMeans) {
    EXPECT_EQ(shownBy("intel-laptop"), expected(57, 57, 50, 31, 42, 57));
    EXPECT_EQ(shownBy("arm-board"), expected(52, 50, 52, 52, 52, 52));
    EXPECT_EQ(shownBy("two-socket-server"), expected(51, 51, 51, 51, 34, 51));
    EXPECT_EQ(shownBy("hybrid-laptop"), expected(62, 62, 62, 62, 62, 62));
    // The processor's sensor on the board says 118, which is never shown.
    EXPECT_EQ(shownBy("amd-desktop"), expected(62, 58, 62, 62, 53, 62));
    // Its sound channels.
    EXPECT_EQ(shownBy("broken-machine"), expected(53, 53, 53, 53, 53, 53));
}

TEST(ModelledMachines, AVirtualMachineHasNoSensors) {
    ModelledMachine modelled(machine("virtual-machine"));
    EXPECT_EQ(modelled.sensor.availability(),
              HIDTemperatureSensor::Availability(HIDTemperatureSensor::NoSensorsPublished{0}));
    EXPECT_EQ(modelled.shown(SensorSource::hottest), std::nullopt);
}

TEST(ModelledMachines, ATickReadsTheFilesOfItsSourceAndNoOther) {
    CountingFileAccess access;
    ModelledMachine modelled(machine("intel-laptop"), access);
    EXPECT_EQ(access.reads, 0);
    EXPECT_EQ(modelled.shown(SensorSource::cpu), 57);
    EXPECT_EQ(access.reads, 5);
    EXPECT_EQ(modelled.shown(SensorSource::battery), 31);
    EXPECT_EQ(access.reads, 6);
    const auto opened = access.opened;
    EXPECT_EQ(modelled.shown(SensorSource::storage), 42);
    EXPECT_EQ(access.reads, 8);
    EXPECT_EQ(access.opened, opened);
}

TEST(ModelledMachines, ADriveThatIsPulledAndPushedBackIsFoundAgain) {
    const TemporaryTree tree;
    tree.addMonitor(0, "devices/usb/drive", "drivetemp", {{"", "35000\n"}});
    ModelledMachine modelled(tree.path());
    EXPECT_EQ(modelled.sensor.availability(), HIDTemperatureSensor::Availability(HIDTemperatureSensor::Ready{1}));
    tree.remove("class/hwmon/hwmon0");
    modelled.sensor.refresh();
    EXPECT_FALSE(modelled.sensor.isAvailable());
    tree.link("class/hwmon/hwmon3", "devices/usb/drive/hwmon/hwmon0");
    modelled.sensor.refresh();
    EXPECT_EQ(modelled.shown(SensorSource::storage), 35);
}

}  // namespace
}  // namespace thermopix
