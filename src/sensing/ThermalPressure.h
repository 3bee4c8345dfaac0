#pragma once

#include <array>
#include <string_view>

#include "base/Enumeration.h"

namespace thermopix {

/// The system's own word on how hot the machine is, from cool to hot.
enum class ThermalPressure { nominal, fair, serious, critical };

template <>
struct EnumerationTable<ThermalPressure> {
    struct Row {
        ThermalPressure value;
        std::string_view rawValue;
        std::string_view title;
        /// The title inside a sentence.
        std::string_view lowercaseTitle;
    };
    static constexpr std::array rows{
        Row{ThermalPressure::nominal, "nominal", "Nominal", "nominal"},
        Row{ThermalPressure::fair, "fair", "Fair", "fair"},
        Row{ThermalPressure::serious, "serious", "Serious", "serious"},
        Row{ThermalPressure::critical, "critical", "Critical", "critical"},
    };
};
static_assert(isCompleteTable<ThermalPressure::critical>());

/// From the numbering of `ThermalStateReader`; anything outside 0 to 3 is nominal.
[[nodiscard]] ThermalPressure thermalPressure(int thermalState);

[[nodiscard]] constexpr bool isElevated(ThermalPressure pressure) {
    return pressure >= ThermalPressure::serious;
}

}  // namespace thermopix
