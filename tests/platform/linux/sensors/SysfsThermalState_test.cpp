#include "platform/linux/sensors/SysfsThermalState.h"

#include <gtest/gtest.h>

#include "platform/linux/sensors/HeldChannel.h"
#include "platform/linux/sensors/SysfsMachine.h"

namespace thermopix {
namespace {

class ThermalTree : public TemporaryTree {
public:
    using Trips = std::vector<std::pair<std::string, std::string>>;

    void addZone(int number, std::string_view temperature, const Trips& trips) const {
        const auto zone = "class/thermal/thermal_zone" + std::to_string(number);
        write(zone + "/temp", temperature);
        for (std::size_t i = 0; i < trips.size(); ++i) {
            write(zone + "/trip_point_" + std::to_string(i) + "_type", trips[i].first + "\n");
            write(zone + "/trip_point_" + std::to_string(i) + "_temp", trips[i].second + "\n");
        }
    }
    void setTemperature(int number, std::string_view temperature) const {
        write("class/thermal/thermal_zone" + std::to_string(number) + "/temp", temperature);
    }
    void addCooling(int number, std::string_view type, std::string_view state) const {
        const auto device = "class/thermal/cooling_device" + std::to_string(number);
        write(device + "/type", std::string(type) + "\n");
        write(device + "/cur_state", state);
    }
};

int stateOf(const std::filesystem::path& root) {
    return SysfsThermalState(root).thermalState();
}

TEST(SysfsThermalState, TripPointsRaiseTheStateInTheirOrder) {
    const ThermalTree tree;
    tree.addZone(0, "20000\n", {{"critical", "105000"}, {"active", "60000"}, {"hot", "100000"}, {"passive", "90000"}});
    SysfsThermalState reader(tree.path());
    const std::vector<std::pair<std::string_view, int>> expected = {
        {"59999\n", 0}, {"60000\n", 1},  {"89999\n", 1},  {"90000\n", 2},  {"99999\n", 2},
        {"100000", 3},  {"104999\n", 3}, {"105000\n", 3}, {"200000\n", 3}, {"-5000\n", 0},
    };
    for (const auto& [temperature, state] : expected) {
        tree.setTemperature(0, temperature);
        EXPECT_EQ(reader.thermalState(), state) << temperature;
    }
}

TEST(SysfsThermalState, TheWorstOfAllZonesAndTripPointsCounts) {
    struct Zone {
        std::string_view temperature;
        ThermalTree::Trips trips;
    };
    const std::vector<std::pair<int, std::vector<Zone>>> cases = {
        {1, {{"56000\n", {{"active", "85000"}, {"active", "55000"}, {"active", "70000"}}}}},
        {3, {{"81000\n", {{"passive", "95000"}, {"critical", "80000"}}}}},
        {2,
         {{"50000\n", {{"passive", "90000"}}},
          {"70000\n", {{"active", "60000"}}},
          {"91000\n", {{"passive", "90000"}}}}},
    };
    for (const auto& [state, zones] : cases) {
        const ThermalTree tree;
        for (std::size_t i = 0; i < zones.size(); ++i) {
            tree.addZone(static_cast<int>(i) * 6, zones[i].temperature, zones[i].trips);
        }
        EXPECT_EQ(stateOf(tree.path()), state);
    }
}

TEST(SysfsThermalState, TripPointsThatAreUnsetOrNotPositiveOrUnknownAreIgnored) {
    const ThermalTree tree;
    tree.addZone(
        0, "50000\n",
        {{"critical", "-274000"}, {"hot", "0"}, {"passive", ""}, {"passive", "garbage"}, {"strange", "10000"}});
    tree.addZone(1, "50000\n", {});
    CountingFileAccess access;
    SysfsThermalState reader(tree.path(), access);
    EXPECT_EQ(reader.thermalState(), 0);
    EXPECT_EQ(access.reads, 0);
    EXPECT_EQ(access.opened, 0);
}

TEST(SysfsThermalState, AProcessorThatIsSlowedDownIsSerious) {
    for (const auto type : {"Processor", "intel_powerclamp", "cpufreq-cpu0", "thermal-cpufreq-1", "idle-cpu0"}) {
        const ThermalTree tree;
        tree.addCooling(0, type, "0\n");
        SysfsThermalState reader(tree.path());
        for (const auto& [current, state] :
             std::vector<std::pair<std::string_view, int>>{{"0\n", 0}, {"1\n", 2}, {"-1\n", 0}, {"garbage\n", 0}}) {
            tree.addCooling(0, type, current);
            EXPECT_EQ(reader.thermalState(), state) << type << ' ' << current;
        }
    }
}

TEST(SysfsThermalState, FansAndPanelsAreNoThrottling) {
    const ThermalTree tree;
    int number = 0;
    for (const auto type : {"Fan", "pwm-fan", "LCD", "TCC Offset", "INT3400", "devfreq-gpu"}) {
        tree.addCooling(number++, type, "3\n");
    }
    EXPECT_EQ(stateOf(tree.path()), 0);
}

TEST(SysfsThermalState, AStateIsOneReadForEachUsableZoneAndEachProcessorCoolingDevice) {
    CountingFileAccess access;
    SysfsThermalState reader(machine("intel-laptop"), access);
    EXPECT_EQ(access.opened, 0) << "The zones are looked for when they are first asked";
    EXPECT_EQ(reader.thermalState(), 0);
    const auto opened = access.opened;
    for (int poll = 0; poll < 3; ++poll) {
        access.readFiles.clear();
        EXPECT_EQ(reader.thermalState(), 0);
        EXPECT_EQ(access.readFiles, (std::vector<std::string>{"temp", "temp", "cur_state", "cur_state", "cur_state"}));
    }
    EXPECT_EQ(access.opened, opened);
}

TEST(SysfsThermalState, AZoneThatFailsOrSleepsSaysNothing) {
    const ThermalTree tree;
    tree.addZone(0, "99000\n", {{"critical", "90000"}});
    tree.addZone(1, "99000\n", {{"passive", "90000"}});
    CountingFileAccess access;
    TestClock clock;
    SensorPolling polling(clock);
    SysfsThermalState reader(tree.path(), access, polling);
    EXPECT_EQ(reader.thermalState(), 3);
    access.failing = {tree.path() / "class/thermal/thermal_zone0/temp"};
    EXPECT_EQ(reader.thermalState(), 2);
    tree.setTemperature(1, "garbage");
    EXPECT_EQ(reader.thermalState(), 0);

    const auto power = "class/thermal/thermal_zone0/device/power/";
    tree.write(power + std::string("control"), "auto\n");
    tree.write(power + std::string("runtime_status"), "suspended\n");
    access.failing.clear();
    polling.noteDiscovery();
    EXPECT_EQ(reader.thermalState(), 0);
    access.readFiles.clear();
    EXPECT_EQ(reader.thermalState(), 0);
    EXPECT_EQ(access.readFiles, (std::vector<std::string>{"runtime_status", "temp"}));
}

TEST(SysfsThermalState, TheTripPointsThatUsersSetOnTheProcessorsPackageAreNoLimits) {
    const ThermalTree tree;
    tree.addZone(0, "56000\n", {{"passive", "55000"}, {"passive", "0"}});
    tree.write("class/thermal/thermal_zone0/type", "x86_pkg_temp\n");
    EXPECT_EQ(stateOf(tree.path()), 0);
    tree.write("class/thermal/thermal_zone0/type", "acpitz\n");
    EXPECT_EQ(stateOf(tree.path()), 2);
}

TEST(SysfsThermalState, ZonesAndTheirBoundsAreReadAnewAfterEachDiscoveryOfSensors) {
    const ThermalTree tree;
    TestClock clock;
    SensorPolling polling(clock);
    SysfsThermalState reader(tree.path(), systemFileAccess(), polling);
    EXPECT_EQ(reader.thermalState(), 0);
    tree.addZone(0, "99000\n", {{"hot", "90000"}});
    EXPECT_EQ(reader.thermalState(), 0);
    polling.noteDiscovery();
    EXPECT_EQ(reader.thermalState(), 3);
    tree.write("class/thermal/thermal_zone0/trip_point_0_temp", "100000\n");
    EXPECT_EQ(reader.thermalState(), 3);
    polling.noteDiscovery();
    EXPECT_EQ(reader.thermalState(), 0);
    tree.remove("class/thermal");
    polling.noteDiscovery();
    EXPECT_EQ(reader.thermalState(), 0);
}

TEST(SysfsThermalState, EveryModelledMachineIsAtEase) {
    for (const auto& modelled : modelledMachines) {
        EXPECT_EQ(stateOf(machine(modelled)), 0) << modelled;
    }
    EXPECT_EQ(stateOf("/nowhere"), 0);
}

}  // namespace
}  // namespace thermopix
