#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "base/Enumeration.h"

namespace thermopix {

enum class TemperatureUnit { celsius, fahrenheit };

/// Temperatures in degrees Celsius, both ends included.
struct CelsiusRange {
    double lowest;
    double highest;

    [[nodiscard]] constexpr bool contains(double celsius) const { return lowest <= celsius && celsius <= highest; }
};

template <>
struct EnumerationTable<TemperatureUnit> {
    struct Row {
        TemperatureUnit value;
        std::string_view rawValue;
        std::string_view title;
        std::string_view symbol;
        std::string_view suffix;
        std::int64_t digitSlots;
        CelsiusRange fixedWidthCelsiusRange;
    };
    static constexpr std::array rows{
        Row{TemperatureUnit::celsius, "celsius", "Celsius", "°C", "C", 2, {0.0, 99.0}},
        Row{TemperatureUnit::fahrenheit, "fahrenheit", "Fahrenheit", "°F", "F", 3, {0.0, 150.0}},
    };
};
static_assert(isCompleteTable<TemperatureUnit::fahrenheit>());

/// Degree sign and letter.
[[nodiscard]] constexpr std::string_view symbol(TemperatureUnit unit) {
    return row(unit).symbol;
}
/// The bare letter.
[[nodiscard]] constexpr std::string_view suffix(TemperatureUnit unit) {
    return row(unit).suffix;
}
/// Digit positions that the readout reserves.
[[nodiscard]] constexpr std::int64_t digitSlots(TemperatureUnit unit) {
    return row(unit).digitSlots;
}
/// Where the readout keeps its width.
[[nodiscard]] constexpr CelsiusRange fixedWidthCelsiusRange(TemperatureUnit unit) {
    return row(unit).fixedWidthCelsiusRange;
}

[[nodiscard]] double valueFromCelsius(TemperatureUnit unit, double celsius);

}  // namespace thermopix
