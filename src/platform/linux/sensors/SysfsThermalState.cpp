#include "platform/linux/sensors/SysfsThermalState.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/sensors/SysfsTree.h"

namespace thermopix {

namespace {

enum State { nominal, fair, serious, critical };

/// How the names of the cooling devices begin that slow the processor down, in older and newer kernels.
constexpr std::array<std::string_view, 6> processorCooling{
    "Processor", "intel_powerclamp", "cpufreq-", "thermal-cpufreq-", "idle-", "thermal-idle-"};

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

SysfsThermalState::SysfsThermalState(std::filesystem::path root, FileAccess& access)
    : root_(std::move(root)), access_(access) {
    rediscover();
}

void SysfsThermalState::rediscover() {
    zones_.clear();
    throttles_.clear();
    const auto folder = root_ / "class" / "thermal";
    for (const auto& entry : numberedEntries(folder, "thermal_zone")) {
        Zone zone;
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
            zone.temperature = SysfsFile(access_, entry.path / "temp");
            zone.power = RuntimePower(access_, entry.path / "device");
            if (zone.temperature.isOpen()) {
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
    const auto temperature = zone.power.isAsleep() ? std::nullopt : zone.temperature.readInteger();
    if (!temperature) {
        return nominal;
    }
    int state = critical;
    while (state > nominal && *temperature < zone.bounds[static_cast<std::size_t>(state)]) {
        --state;
    }
    return state;
}

}  // namespace thermopix
