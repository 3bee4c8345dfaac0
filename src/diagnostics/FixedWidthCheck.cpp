#include "diagnostics/FixedWidthCheck.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cmath>

namespace thermopix {

namespace {

constexpr double stepCelsius = 0.5;

std::set<std::int64_t> widths(TemperatureUnit unit, CelsiusRange range, ReadoutWidth width) {
    std::set<std::int64_t> found;
    const auto steps = std::llround((range.highest - range.lowest) / stepCelsius);
    for (long long i = 0; i <= steps; ++i) {
        Display display;
        display.unit = unit;
        display.value = std::llround(valueFromCelsius(unit, range.lowest + static_cast<double>(i) * stepCelsius));
        found.insert(width(display));
    }
    return found;
}

}  // namespace

void checkFixedWidth(std::string_view styleTitle, TemperatureUnit unit, ReadoutWidth width, Checklist& checklist) {
    const auto range = fixedWidthCelsiusRange(unit);
    const auto found = widths(unit, range, width);
    checklist.check(
        fmt::format("{}/{} has one width from {:.0f}–{:.0f} °C", styleTitle, suffix(unit), range.lowest, range.highest),
        found.size() == 1, fmt::format("[{}]", fmt::join(found, ", ")));
}

}  // namespace thermopix
