#include "platform/linux/sensors/SysfsThermalState.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/sensors/SensorChannel.h"
#include "platform/linux/sensors/SysfsTree.h"

namespace thermopix {

namespace {

enum State { nominal, fair, serious, critical };

/// How the names of the cooling devices begin that slow the processor down, in older and newer kernels.
constexpr std::array<std::string_view, 6> processorCooling{
    "Processor", "intel_powerclamp", "cpufreq-", "thermal-cpufreq-", "idle-", "thermal-idle-"};

/// The processor's package, whose trip points are notices that users set, not limits of the machine.
constexpr std::string_view zoneWithUsersTrips = "x86_pkg_temp";

bool coolsProcessor(std::string_view type) {
    return std::any_of(processorCooling.begin(), processorCooling.end(),
                       [&](std::string_view start) { return type.starts_with(start); });
}

std::optional<State> stateAt(std::string_view tripType) {
    if (tripType == "active") {
        return fair;
    }
    if (tripType == "passive") {
        return serious;
    }
    return tripType == "hot" || tripType == "critical" ? std::optional(critical) : std::nullopt;
}

}  // namespace

SysfsThermalState::SysfsThermalState(std::filesystem::path root, FileAccess& access, SensorPolling& polling)
    : root_(std::move(root)), access_(access), polling_(polling), channels_(access, polling) {}

void SysfsThermalState::rediscover() {
    const auto before = std::exchange(zones_, {});
    throttles_.clear();
    const auto folder = root_ / "class" / "thermal";
    for (const auto& entry : numberedEntries(folder, "thermal_zone")) {
        Zone zone;
        if (readLine(entry.path / "type") == zoneWithUsersTrips) {
            continue;
        }
        for (const auto& trip : numberedEntries(entry.path, "trip_point_", "_temp")) {
            const auto type = readLine(entry.path / ("trip_point_" + std::to_string(trip.number) + "_type"));
            const auto state = stateAt(type.value_or(""));
            const auto bound = parseSysfsInteger(readLine(trip.path).value_or(""));
            if (state && bound && *bound > 0) {
                auto& lowest = zone.bounds[*state];
                lowest = std::min(lowest, *bound);
            }
        }
        if (zone.bounds != Zone().bounds) {
            SensorDevice device;
            device.device = entry.path / "device";
            zone.temperature = channels_.open(device, SensorDevice::Channel{1, "", entry.path / "temp", {}});
            if (zone.temperature) {
                zones_.push_back(std::move(zone));
            }
        }
    }
    for (const auto& entry : numberedEntries(folder, "cooling_device")) {
        if (coolsProcessor(readLine(entry.path / "type").value_or(""))) {
            if (SysfsFile state(access_, entry.path / "cur_state"); state.isOpen()) {
                throttles_.push_back(std::move(state));
            }
        }
    }
}

int SysfsThermalState::thermalState() {
    if (discovery_ != polling_.discoveries()) {
        discovery_ = polling_.discoveries();
        rediscover();
    }
    int state = nominal;
    for (const auto& zone : zones_) {
        state = std::max(state, stateOf(zone));
    }
    for (const auto& throttle : throttles_) {
        if (throttle.readInteger().value_or(0) > 0) {
            state = std::max<int>(state, serious);
        }
    }
    return state;
}

int SysfsThermalState::stateOf(const Zone& zone) {
    const auto celsius = zone.temperature->read();
    if (!celsius) {
        return nominal;
    }
    const auto temperature = std::llround(*celsius * 1000);
    int state = critical;
    while (state > nominal && temperature < zone.bounds[static_cast<std::size_t>(state)]) {
        --state;
    }
    return state;
}

}  // namespace thermopix
