#include "platform/linux/sensors/SensorDevice.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <tuple>
#include <utility>

#include "platform/linux/sensors/SysfsTree.h"

namespace thermopix {

namespace {

constexpr std::string_view zonePrefix = "thermal_zone";
constexpr std::string_view monitorPrefix = "hwmon";

std::string chipName(const std::filesystem::path& file) {
    auto name = readLine(file).value_or("unnamed");
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

bool hasRunningNumber(const std::filesystem::path& device) {
    const auto name = device.filename().string();
    return name.starts_with(zonePrefix) || name.starts_with(monitorPrefix);
}

/// The place of a device: its path below the root, without last folders that only carry a running number.
std::string placeOf(std::filesystem::path device, const std::filesystem::path& root) {
    while (hasRunningNumber(device)) {
        device = device.parent_path();
    }
    return device.lexically_relative(root);
}

bool isBattery(const std::filesystem::path& device) {
    return readLine(device / "type") == "Battery" && readLine(device / "scope") != "Device";
}

bool isRotating(const std::filesystem::path& device) {
    const auto disks = entries(device / "block");
    return std::any_of(disks.begin(), disks.end(),
                       [](const auto& disk) { return readLine(disk / "queue" / "rotational") == "1"; });
}

SensorFamily familyOfMonitor(const std::string& chip, const std::filesystem::path& device) {
    const auto family = familyOfChip(chip);
    if (family == SensorFamily::other && isBattery(device)) {
        return SensorFamily::battery;
    }
    return family == SensorFamily::solidStateDrive && isRotating(device) ? SensorFamily::rotatingDrive : family;
}

std::vector<SensorDevice::Channel> channelsOf(const std::filesystem::path& monitor) {
    std::vector<SensorDevice::Channel> channels;
    for (auto& [index, input] : numberedEntries(monitor, "temp", "_input")) {
        const auto stem = "temp" + std::to_string(index);
        channels.push_back(
            {index, readLine(monitor / (stem + "_label")).value_or(""), input, monitor / (stem + "_fault")});
    }
    return channels;
}

std::optional<SensorDevice> monitorAt(const NumberedEntry& entry, const std::filesystem::path& root) {
    const auto monitor = realPath(entry.path);
    if (!monitor) {
        return std::nullopt;
    }
    auto channels = channelsOf(*monitor);
    if (channels.empty()) {
        return std::nullopt;
    }
    const auto device = realPath(*monitor / "device").value_or(*monitor);
    auto chip = chipName(*monitor / "name");
    const auto family = familyOfMonitor(chip, device);
    return SensorDevice{family, std::move(chip), device, placeOf(device, root), entry.number, std::move(channels)};
}

std::optional<SensorDevice> zoneAt(const NumberedEntry& entry, const std::filesystem::path& root) {
    const auto zone = realPath(entry.path);
    if (!zone || !std::filesystem::exists(std::filesystem::symlink_status(*zone / "temp"))) {
        return std::nullopt;
    }
    auto chip = chipName(*zone / "type");
    const auto family = familyOfChip(chip);
    return SensorDevice{
        family, std::move(chip), *zone, placeOf(*zone, root), entry.number, {{1, "", *zone / "temp", {}}}};
}

/// The kernel has two drivers for the processor's package: this zone, and this monitor, which has the cores too.
constexpr std::string_view packageZone = "x86_pkg_temp";
constexpr std::string_view packageMonitor = "coretemp";

/// Whether a hardware monitor publishes the temperature of this zone.
bool isPublished(const SensorDevice& zone, const std::vector<SensorDevice>& monitors) {
    const auto chip = zone.chip == packageZone ? packageMonitor : std::string_view(zone.chip);
    return !numberedEntries(zone.device, monitorPrefix).empty() ||
           std::any_of(monitors.begin(), monitors.end(), [&](const SensorDevice& monitor) {
               return monitor.device == zone.device || monitor.chip == chip;
           });
}

/// Digits compare as numbers, so that the tenth socket follows the ninth.
void sortByPlace(std::vector<SensorDevice>& devices) {
    std::sort(devices.begin(), devices.end(), [](const SensorDevice& a, const SensorDevice& b) {
        if (a.family != b.family) {
            return a.family < b.family;
        }
        if (const int order = strverscmp(a.place.c_str(), b.place.c_str()); order != 0) {
            return order < 0;
        }
        return std::tie(a.chip, a.number) < std::tie(b.chip, b.number);
    });
}

}  // namespace

std::vector<SensorDevice> discoverSensorDevices(const std::filesystem::path& root) {
    const auto top = realPath(root).value_or(root);
    std::vector<SensorDevice> devices;
    for (const auto& entry : numberedEntries(top / "class" / "hwmon", monitorPrefix)) {
        if (auto monitor = monitorAt(entry, top)) {
            devices.push_back(std::move(*monitor));
        }
    }
    std::vector<SensorDevice> zones;
    for (const auto& entry : numberedEntries(top / "class" / "thermal", zonePrefix)) {
        if (auto zone = zoneAt(entry, top); zone && !isPublished(*zone, devices)) {
            zones.push_back(std::move(*zone));
        }
    }
    std::move(zones.begin(), zones.end(), std::back_inserter(devices));
    sortByPlace(devices);
    return devices;
}

std::vector<SensorDevice> discoverNvidiaCards(const std::filesystem::path& root) {
    const auto top = realPath(root).value_or(root);
    std::vector<SensorDevice> cards;
    for (const auto& entry : entries(top / "bus" / "pci" / "devices")) {
        const auto card = realPath(entry);
        if (!card || readLine(*card / "vendor") != "0x10de" ||
            !readLine(*card / "class").value_or("").starts_with("0x03")) {
            continue;
        }
        const auto driver = realPath(*card / "driver");
        if (!driver || driver->filename() == "nvidia") {
            cards.push_back({SensorFamily::graphics, "nvidia", *card, placeOf(*card, top), 0, {{}}});
        }
    }
    sortByPlace(cards);
    return cards;
}

}  // namespace thermopix
