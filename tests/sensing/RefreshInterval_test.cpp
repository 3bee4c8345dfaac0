#include "sensing/RefreshInterval.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>

namespace thermopix {
namespace {

using namespace std::chrono_literals;

TEST(RefreshInterval, ToleratesAQuarterOfItself) {
    struct Case {
        RefreshInterval interval;
        std::int64_t rawValue;
        std::chrono::milliseconds period;
        std::chrono::milliseconds leeway;
        std::string_view title;
    };
    constexpr std::array cases{
        Case{RefreshInterval::oneSecond, 1, 1s, 250ms, "Every second"},
        Case{RefreshInterval::twoSeconds, 2, 2s, 500ms, "Every 2 seconds"},
        Case{RefreshInterval::fiveSeconds, 5, 5s, 1250ms, "Every 5 seconds"},
        Case{RefreshInterval::tenSeconds, 10, 10s, 2500ms, "Every 10 seconds"},
        Case{RefreshInterval::thirtySeconds, 30, 30s, 7500ms, "Every 30 seconds"},
    };
    static_assert(cases.size() == caseCount<RefreshInterval>);
    for (const auto& expected : cases) {
        EXPECT_EQ(rawValue(expected.interval), expected.rawValue);
        EXPECT_EQ(seconds(expected.interval), expected.period);
        EXPECT_EQ(leeway(expected.interval), expected.leeway);
        EXPECT_EQ(title(expected.interval), expected.title);
        EXPECT_EQ(fromRawValue<RefreshInterval>(expected.rawValue), expected.interval);
    }
}

TEST(RefreshInterval, AnotherNumberOfSecondsIsNoInterval) {
    for (const std::int64_t raw : {0, -1, 3, 31}) {
        EXPECT_EQ(fromRawValue<RefreshInterval>(raw), std::nullopt) << raw;
    }
}

}  // namespace
}  // namespace thermopix
