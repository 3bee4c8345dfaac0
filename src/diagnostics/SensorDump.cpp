#include "diagnostics/SensorDump.h"

#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "base/Unicode.h"
#include "diagnostics/ReadCost.h"
#include "diagnostics/SensorCostReport.h"
#include "diagnostics/SensorDiagnosis.h"
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

void printDiagnosis(const HIDTemperatureSensor& sensor, StandardOutput& output) {
    output.line("");
    output.line("No thermal sensor could be read. The app falls back to the public");
    output.line("ProcessInfo.thermalState and shows `—°` in the menu bar.");
    output.line("");
    for (const auto& line : sensorDiagnosis(sensor.availability())) {
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
    printSensorCosts(samples, ReadCost(sensor, platform.clock()), output);
    return 0;
}

}  // namespace thermopix::SensorDump
