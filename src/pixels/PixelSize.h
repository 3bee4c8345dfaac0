#pragma once

#include <array>
#include <string_view>

#include "base/Enumeration.h"

namespace thermopix {

enum class PixelSize { compact, large };

template <>
struct EnumerationTable<PixelSize> {
    struct Row {
        PixelSize value;
        std::string_view rawValue;
        std::string_view title;
        double cell;
    };
    static constexpr std::array rows{
        Row{PixelSize::compact, "compact", "Compact", 2.0},
        Row{PixelSize::large, "large", "Large", 3.0},
    };
};
static_assert(isCompleteTable<PixelSize::large>());

/// Whole points per cell.
[[nodiscard]] constexpr double cell(PixelSize size) {
    return row(size).cell;
}

}  // namespace thermopix
