#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <string_view>

#include "base/Enumeration.h"

namespace thermopix {

/// How often the readout is refreshed; the raw value is whole seconds.
enum class RefreshInterval { oneSecond, twoSeconds, fiveSeconds, tenSeconds, thirtySeconds };

template <>
struct EnumerationTable<RefreshInterval> {
    struct Row {
        RefreshInterval value;
        std::int64_t rawValue;
        std::string_view title;
    };
    static constexpr std::array rows{
        Row{RefreshInterval::oneSecond, 1, "Every second"},
        Row{RefreshInterval::twoSeconds, 2, "Every 2 seconds"},
        Row{RefreshInterval::fiveSeconds, 5, "Every 5 seconds"},
        Row{RefreshInterval::tenSeconds, 10, "Every 10 seconds"},
        Row{RefreshInterval::thirtySeconds, 30, "Every 30 seconds"},
    };
};
static_assert(isCompleteTable<RefreshInterval::thirtySeconds>());

[[nodiscard]] constexpr std::chrono::seconds seconds(RefreshInterval interval) {
    return std::chrono::seconds(row(interval).rawValue);
}

/// A quarter of the interval: how late a tick may come, so that the system can join wake-ups.
[[nodiscard]] constexpr std::chrono::milliseconds leeway(RefreshInterval interval) {
    return std::chrono::milliseconds(seconds(interval)) / 4;
}

}  // namespace thermopix
