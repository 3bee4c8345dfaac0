#include "diagnostics/AcceptanceSelfTest.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "diagnostics/Checklist.h"
#include "diagnostics/FixedWidthCheck.h"
#include "pixels/PixelPet.h"
#include "pixels/PixelRasterizer.h"
#include "pixels/PixelSize.h"
#include "pixels/PixelStyle.h"
#include "sensing/HIDTemperatureSensor.h"
#include "sensing/SensorSource.h"
#include "sensing/TemperatureMonitor.h"
#include "sensing/TemperatureUnit.h"
#include "sensing/ThermalPressure.h"

namespace thermopix::AcceptanceSelfTest {

namespace {

constexpr CelsiusRange believableProcessor{10, 110};

void checkSensors(HIDTemperatureSensor& sensor, Checklist& checklist) {
    checklist.check("IOKit HID sensor service opens",
                    std::holds_alternative<HIDTemperatureSensor::Ready>(sensor.availability()),
                    summary(sensor.availability()));
    const auto samples = sensor.sample();
    checklist.check("at least one sensor readable", !samples.empty(), fmt::format("{} found", samples.size()));
    checklist.check("every reading is plausible", std::all_of(samples.begin(), samples.end(), [](const auto& sample) {
                        return isPlausible(sample.celsius);
                    }));
}

/// The hottest reading of the first stage that has one, read afresh.
std::optional<double> processorCelsius(HIDTemperatureSensor& sensor) {
    for (const auto& patterns : samplingStages(SensorSource::cpu)) {
        const auto samples = sensor.sample([&](std::string_view name) { return matches(name, patterns); });
        if (const auto hottest = reduce(samples, patterns)) {
            return hottest;
        }
    }
    return std::nullopt;
}

void checkProcessor(HIDTemperatureSensor& sensor, Checklist& checklist) {
    const auto celsius = processorCelsius(sensor);
    checklist.check("a CPU-ish temperature resolves", celsius.has_value(),
                    celsius ? fmt::format("{:.1f} °C", *celsius) : "none");
    if (celsius) {
        checklist.check("CPU temperature is in a believable band", believableProcessor.contains(*celsius));
    }
}

void checkHeight(PixelStyle style, PixelSize size, Checklist& checklist) {
    const double height = renderedHeight(style, size, PixelPet::cat);
    checklist.check(fmt::format("{}/{} fits the menu bar", title(style), title(size)), height <= menuBarThickness,
                    fmt::format("{:.0f} pt of {:.0f}", height, menuBarThickness));
}

/// The readout as the menu bar shows it without a pet, so that a hot display carries its flame.
PixelBitmap readout(const Display& display, PixelStyle style) {
    return PixelRasterizer::bitmap(display, {.style = style, .showsUnitLetter = true});
}

void checkRasterizes(const Display& display, PixelStyle style, Checklist& checklist) {
    const auto bitmap = readout(display, style);
    checklist.check(fmt::format("{}/{} rasterizes", title(style), suffix(display.unit)), bitmap.width() > 0,
                    fmt::format("{}×{} cells", bitmap.width(), bitmap.height()));
}

void checkStyle(PixelStyle style, TemperatureMonitor& monitor, Checklist& checklist) {
    for (const auto size : allCases<PixelSize>()) {
        checkHeight(style, size, checklist);
    }
    for (const auto unit : allCases<TemperatureUnit>()) {
        checkRasterizes(monitor.poll(SensorSource::cpu, unit), style, checklist);
    }
    for (const auto unit : allCases<TemperatureUnit>()) {
        checkFixedWidth(
            title(style), unit, [&](const Display& display) { return readout(display, style).width(); }, checklist);
    }
}

}  // namespace

std::int32_t run(Platform& platform, StandardOutput& output) {
    const auto& system = platform.systemInformation();
    output.line("=== Thermopix acceptance self-test ===");
    output.line(fmt::format("{} · {} · {}", system.model(), system.processor(), system.operatingSystemVersion()));

    Checklist checklist(output);
    HIDTemperatureSensor sensor(platform.hidSymbols(), platform.log());
    checkSensors(sensor, checklist);
    checkProcessor(sensor, checklist);

    TemperatureMonitor monitor(
        sensor, [&] { return thermalPressure(platform.thermalState().thermalState()); }, platform.log());
    for (const auto style : allCases<PixelStyle>()) {
        checkStyle(style, monitor, checklist);
    }
    return checklist.finish();
}

}  // namespace thermopix::AcceptanceSelfTest
