#include "diagnostics/SensorDump.h"

#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/Unicode.h"
#include "diagnostics/ReadCost.h"
#include "diagnostics/SensorCostReport.h"
#include "diagnostics/SensorSections.h"
#include "environment/AppInfo.h"
#include "sensing/HIDTemperatureSensor.h"
#include "sensing/ThermalPressure.h"

namespace thermopix::SensorDump {

namespace {

constexpr std::size_t labelColumns = 12;

std::string headerLine(std::string_view label, std::string_view value) {
    return paddedRight(label, labelColumns).append(value);
}

void printMachine(const SystemInformation& system, StandardOutput& output) {
    output.line(headerLine("bundle:", system.bundlePath()));
    output.line(headerLine("version:", fmt::format("{} ({})", AppInfo::shortVersion(system), AppInfo::build(system))));
    output.line(headerLine("machine:", fmt::format("{}  ·  {}", system.model(), system.processor())));
    output.line(headerLine("macOS:", system.operatingSystemVersion()));
    if (system.isVirtualMachine()) {
        output.line(headerLine("", "⚠︎ running in a virtual machine — guests publish no thermal sensors"));
    }
}

void printStatus(const HIDTemperatureSensor& sensor, std::size_t readableCount, ThermalPressure pressure,
                 StandardOutput& output) {
    output.line(headerLine("status:", summary(sensor.availability())));
    output.line(headerLine("sensors:", fmt::format("{} readable", readableCount)));
    output.line(headerLine("thermal:", title(pressure)));
}

using Lines = std::vector<std::string>;

/// Why no sensor could be read, by the state of the backend.
struct Explanation {
    Lines operator()(const HIDTemperatureSensor::Ready& /*ready*/) const {
        return {"Sensors resolved but every reading fell outside the plausible band",
                "(1–150 °C). Please send this dump."};
    }
    Lines operator()(const HIDTemperatureSensor::SymbolsUnavailable& unavailable) const {
        return {
            fmt::format("This macOS no longer exports {}. The private IOKit interface the", unavailable.missing),
            "app reads has changed — the app needs a new sensor backend.",
        };
    }
    Lines operator()(const HIDTemperatureSensor::NoSensorsPublished& none) const {
        if (none.servicesSeen == 0) {
            return {
                "This Mac publishes no thermal HID services at all. Expected on Intel",
                "Macs (temperatures live behind AppleSMC there, not HID) and inside a",
                "VM. On Apple silicon this is a bug — please send this dump.",
            };
        }
        return {
            fmt::format("{} thermal HID services exist but none carries a Product name.", none.servicesSeen),
            "Please send this dump — the app matches sensors by name.",
        };
    }
    Lines operator()(const HIDTemperatureSensor::ClientUnavailable& /*unavailable*/) const {
        return {
            "The HID event system refused to open a client. Expected inside a",
            "sandbox; this build ships with no entitlements, so report this.",
        };
    }
};

void printDiagnosis(const HIDTemperatureSensor& sensor, StandardOutput& output) {
    output.line("");
    output.line("No thermal sensor could be read. The app falls back to the public");
    output.line("ProcessInfo.thermalState and shows `—°` in the menu bar.");
    output.line("");
    for (const auto& line : std::visit(Explanation{}, sensor.availability())) {
        output.line(line);
    }
}

}  // namespace

std::int32_t run(Platform& platform, StandardOutput& output) {
    HIDTemperatureSensor sensor(platform.hidSymbols(), platform.log());
    const auto samples = sensor.sample();

    output.line("=== Thermopix sensor dump ===");
    printMachine(platform.systemInformation(), output);
    printStatus(sensor, samples.size(), thermalPressure(platform.thermalState().thermalState()), output);
    if (samples.empty()) {
        printDiagnosis(sensor, output);
        return 1;
    }
    const auto shown = printSourceSections(samples, output);
    printLeftOverSensors(samples, shown, output);
    ReadCost cost(sensor, platform.clock());
    printSensorCosts(samples, cost, output);
    return 0;
}

}  // namespace thermopix::SensorDump
