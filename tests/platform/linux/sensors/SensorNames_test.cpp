#include "platform/linux/sensors/SensorNames.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/Enumeration.h"
#include "base/Unicode.h"
#include "platform/linux/sensors/SysfsMachine.h"
#include "sensing/SensorSource.h"

namespace thermopix {
namespace {

using Names = std::vector<std::string>;

Names namesOf(std::string_view name) {
    return SysfsSensors(machine(name)).names();
}

/// The sources that show a sensor without falling back, except `hottest`, which follows from the others.
std::vector<SensorSource> sourcesOf(const std::string& name) {
    std::vector<SensorSource> sources;
    for (const auto source : allCases<SensorSource>()) {
        if (source != SensorSource::hottest && matches(source, name)) {
            sources.push_back(source);
        }
    }
    return sources;
}

TEST(SensorNames, AreThoseOfTheModelledMachines) {
    EXPECT_EQ(namesOf("amd-desktop"),
              (Names{"CPU Tctl", "CPU Tccd1", "CPU Tccd2", "GPU MTR Temp edge", "GPU MTR Temp junction",
                     "GPU MTR Temp mem", "SSD nvme Composite", "SSD nvme 2 Composite", "SSD nvme 2 Sensor 1",
                     "SSD drivetemp", "HDD TH0P drivetemp", "nct6798 SYSTIN", "nct6798 C-PUTIN", "nct6798 AUXTIN0",
                     "nct6798 PECI Agent 0", "nct6798 PCH_CHIP_C-PU_MAX_TEMP"}));
    EXPECT_EQ(namesOf("arm-board"), (Names{"CPU cpu_thermal", "GPU MTR Temp gpu_thermal", "ddr_thermal"}));
    EXPECT_EQ(namesOf("two-socket-server"),
              (Names{"CPU Package id 0", "CPU Core 0", "CPU Core 1", "CPU 2 Package id 1", "CPU 2 Core 0",
                     "CPU 2 Core 1", "HDD TH0P drivetemp", "HDD TH0P drivetemp 2", "HDD TH0P drivetemp 3",
                     "HDD TH0P drivetemp 4", "HDD TH0P drivetemp 5", "HDD TH0P drivetemp 6", "jc42", "jc42 2",
                     "ibmaem Ambient", "ibmaem C-PU1 VR", "ibmaem C-PU2 VR"}));
}

TEST(SensorNames, DisksFollowTheirPortsByNumberAndNotBySpelling) {
    const SysfsSensors sensors(machine("two-socket-server"));
    EXPECT_EQ(sensors.read("HDD TH0P drivetemp"), 30.0);
    EXPECT_EQ(sensors.read("HDD TH0P drivetemp 4"), 33.0);  // ata8
    EXPECT_EQ(sensors.read("HDD TH0P drivetemp 5"), 34.0);  // ata9, before ata10
}

TEST(SensorNames, EveryPublishedNameMatchesItsOwnSourceAndNoOther) {
    using Sources = std::vector<SensorSource>;
    const std::map<std::string, SensorSource> ownSources{
        {"CPU", SensorSource::cpu},         {"GPU", SensorSource::gpu},     {"SOC", SensorSource::soc},
        {"Battery", SensorSource::battery}, {"SSD", SensorSource::storage}, {"HDD", SensorSource::storage}};
    for (const auto& modelled : modelledMachines) {
        for (const auto& name : namesOf(modelled)) {
            const auto sources = sourcesOf(name);
            const auto family = name.substr(0, name.find(' '));
            const auto own = ownSources.find(family);
            EXPECT_EQ(sources, own == ownSources.end() ? Sources() : Sources{own->second}) << name;
            const bool isSilicon = family == "CPU" || family == "GPU" || family == "SOC";
            EXPECT_EQ(matches(SensorSource::hottest, name), isSilicon) << name;
        }
    }
}

TEST(SensorNames, EveryPublishedNameIsDistinctValidShortAndOnOneLine) {
    for (const auto& modelled : modelledMachines) {
        const auto names = namesOf(modelled);
        EXPECT_EQ(std::set(names.begin(), names.end()).size(), names.size()) << modelled;
        for (const auto& name : names) {
            EXPECT_EQ(repairedUtf8(name), name);
            EXPECT_GE(characterCount(name), 1U);
            EXPECT_LE(characterCount(name), 64U) << name;
            EXPECT_TRUE(std::none_of(name.begin(), name.end(), [](char c) {
                return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
            })) << name;
        }
    }
}

TEST(SensorNames, HostileLabelsAreRepairedCutAndBrokenUp) {
    const auto names = namesOf("broken-machine");
    const Names expected = {
        "hostile [31m temp1",
        "hostile [31m broken \uFFFD\uFFFD bytes",
        "hostile [31m two",
        "hostile [31m C-PU S-SD",
        "hostile [31m " + std::string(51, 'A'),
        "hostile [31m " + std::string(48, 'A') + " #2",
        "hostile [31m temp7",
    };
    const auto first = std::find(names.begin(), names.end(), expected.front());
    ASSERT_GE(std::distance(first, names.end()), std::distance(expected.begin(), expected.end()));
    EXPECT_EQ(Names(first, first + std::distance(expected.begin(), expected.end())), expected);
    EXPECT_EQ(names.back(), "unnamed");
}

TEST(SensorNames, NamesAndOrderDoNotDependOnTheNumbersOfMonitors) {
    const auto namesWith = [](const std::vector<int>& numbers) {
        const TemporaryTree tree;
        tree.addMonitor(numbers[0], "devices/platform/coretemp.0", "coretemp", {{"Core 0", "41000"}});
        tree.addMonitor(numbers[1], "devices/platform/coretemp.1", "coretemp", {{"Core 0", "42000"}});
        tree.addMonitor(numbers[2], "devices/platform/coretemp.10", "coretemp", {{"Core 0", "43000"}});
        tree.addMonitor(numbers[3], "devices/pci0000:00/0000:01:00.0", "nvme", {{"Composite", "44000"}});
        tree.addMonitor(numbers[4], "devices/platform/board.0", "it8728", {{"", "45000"}, {"", "46000"}});
        const SysfsSensors sensors(tree.path());
        std::vector<std::pair<std::string, std::optional<double>>> all;
        const auto names = sensors.names();
        const auto readings = sensors.readAll();
        for (std::size_t i = 0; i < names.size(); ++i) {
            all.emplace_back(names[i], readings[i]);
        }
        return all;
    };
    const auto expected = std::vector<std::pair<std::string, std::optional<double>>>{
        {"CPU Core 0", 41.0},         {"CPU 2 Core 0", 42.0}, {"CPU 3 Core 0", 43.0},
        {"SSD nvme Composite", 44.0}, {"it8728 temp1", 45.0}, {"it8728 temp2", 46.0}};
    EXPECT_EQ(namesWith({0, 1, 2, 3, 4}), expected);
    EXPECT_EQ(namesWith({9, 3, 12, 0, 1}), expected);
    EXPECT_EQ(namesWith({4, 10, 3, 11, 2}), expected);
}

TEST(SensorNames, ABoardChipSpeaksForTheProcessorOnlyWhereNothingElseDoes) {
    const TemporaryTree tree;
    tree.addMonitor(0, "devices/platform/nct6775.656", "nct6775", {{"SYSTIN", "30000"}, {"CPUTIN", "40000"}});
    EXPECT_EQ(SysfsSensors(tree.path()).names(), (Names{"CPU nct6775 CPUTIN", "nct6775 SYSTIN"}));
    tree.addMonitor(1, "devices/platform/coretemp.0", "coretemp", {{"Core 0", "50000"}});
    EXPECT_EQ(SysfsSensors(tree.path()).names(), (Names{"CPU Core 0", "nct6775 SYSTIN", "nct6775 C-PUTIN"}));
}

TEST(SensorNames, ALabelOfOneFamilyDoesNotLureAnother) {
    const TemporaryTree tree;
    tree.addMonitor(0, "devices/platform/coretemp.0", "coretemp", {{"SSD battery", "50000"}, {"Tdie", "51000"}});
    tree.addMonitor(1, "devices/pci/gpu", "amdgpu", {{"CPU NAND", "50000"}});
    EXPECT_EQ(SysfsSensors(tree.path()).names(), (Names{"CPU S-SD b-attery", "CPU Tdie", "GPU MTR Temp C-PU N-AND"}));
}

TEST(SensorNames, BatteriesAreKnownByTheirNameOrByTheirDevice) {
    const TemporaryTree tree;
    tree.addMonitor(0, "devices/acpi/BAT1", "BAT1", {{"", "30000"}});
    tree.addMonitor(1, "devices/i2c/macsmc", "macsmc_battery", {{"", "31000"}});
    tree.write("devices/i2c/macsmc/type", "Battery\n");
    tree.addMonitor(2, "devices/hid/mouse", "hidpp_battery_0", {{"", "32000"}});
    tree.write("devices/hid/mouse/type", "Battery\n");
    tree.write("devices/hid/mouse/scope", "Device\n");
    tree.addMonitor(3, "devices/acpi/bath", "BATH", {{"", "33000"}});
    EXPECT_EQ(SysfsSensors(tree.path()).names(),
              (Names{"Battery BAT1", "Battery macsmc_battery", "BATH", "hidpp_b-attery_0"}));
}

TEST(SensorNames, ChipsAreSortedIntoFamilies) {
    for (const auto& [family, chips] : std::vector<std::pair<SensorFamily, Names>>{
             {SensorFamily::processor,
              {"coretemp", "k8temp", "k10temp", "zenpower", "via_cputemp", "cpu_thermal", "cpu0_thermal",
               "x86_pkg_temp", "TCPU", "bigcore0_thermal"}},
             {SensorFamily::graphics, {"amdgpu", "radeon", "nouveau", "i915", "xe", "gpu_thermal", "gpuss0_thermal"}},
             {SensorFamily::chipset, {"acpitz", "pch_cannonlake", "pch_skylake", "soc_thermal", "soc_dts0"}},
             {SensorFamily::solidStateDrive, {"nvme", "drivetemp", "ufs"}},
             {SensorFamily::battery, {"BAT0", "BAT12"}},
             {SensorFamily::other,
              {"", "BAT", "nct6775", "it87", "iwlwifi_1", "fam15h_power", "thinkpad", "dell_smm", "scpi_sensors",
               "jc42", "xenon", "coretemp2", "INT3400 Thermal"}}}) {
        for (const auto& chip : chips) {
            EXPECT_EQ(familyOfChip(chip), family) << chip;
        }
    }
}

}  // namespace
}  // namespace thermopix
