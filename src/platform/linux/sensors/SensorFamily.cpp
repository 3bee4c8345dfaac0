#include "platform/linux/sensors/SensorFamily.h"

#include <array>

namespace thermopix {

namespace {

enum class Match { whole, start };

struct ChipRow {
    std::string_view name;
    Match match;
    SensorFamily family;
};

constexpr std::array chips{
    // Sensors on the processor's die: drivers, and the zones of boards described by a device tree.
    ChipRow{"coretemp", Match::whole, SensorFamily::processor},
    ChipRow{"k8temp", Match::whole, SensorFamily::processor},
    ChipRow{"k10temp", Match::whole, SensorFamily::processor},
    ChipRow{"zenpower", Match::whole, SensorFamily::processor},
    ChipRow{"via_cputemp", Match::whole, SensorFamily::processor},
    ChipRow{"peci_cputemp", Match::start, SensorFamily::processor},
    ChipRow{"x86_pkg_temp", Match::whole, SensorFamily::processor},
    ChipRow{"TCPU", Match::start, SensorFamily::processor},
    ChipRow{"B0D4", Match::whole, SensorFamily::processor},
    ChipRow{"cpu", Match::start, SensorFamily::processor},
    ChipRow{"bigcore", Match::start, SensorFamily::processor},
    ChipRow{"littlecore", Match::start, SensorFamily::processor},

    ChipRow{"amdgpu", Match::whole, SensorFamily::graphics},
    ChipRow{"radeon", Match::whole, SensorFamily::graphics},
    ChipRow{"nouveau", Match::whole, SensorFamily::graphics},
    ChipRow{"nvidia", Match::whole, SensorFamily::graphics},
    ChipRow{"i915", Match::whole, SensorFamily::graphics},
    ChipRow{"xe", Match::whole, SensorFamily::graphics},
    ChipRow{"gpu", Match::start, SensorFamily::graphics},

    // The machine's own zone, the platform controller hub, and the dies that hold everything.
    ChipRow{"acpitz", Match::whole, SensorFamily::chipset},
    ChipRow{"pch_", Match::start, SensorFamily::chipset},
    ChipRow{"soc_", Match::start, SensorFamily::chipset},
    ChipRow{"package_thermal", Match::whole, SensorFamily::chipset},

    ChipRow{"nvme", Match::whole, SensorFamily::solidStateDrive},
    ChipRow{"ufs", Match::whole, SensorFamily::solidStateDrive},
    ChipRow{"drivetemp", Match::whole, SensorFamily::solidStateDrive},
};

constexpr std::string_view batteryName = "BAT";

bool isNumberedBattery(std::string_view name) {
    return name.starts_with(batteryName) && name.size() > batteryName.size() &&
           name.find_first_not_of("0123456789", batteryName.size()) == std::string_view::npos;
}

}  // namespace

SensorFamily familyOfChip(std::string_view name) {
    for (const auto& chip : chips) {
        if (chip.match == Match::whole ? name == chip.name : name.starts_with(chip.name)) {
            return chip.family;
        }
    }
    return isNumberedBattery(name) ? SensorFamily::battery : SensorFamily::other;
}

}  // namespace thermopix
