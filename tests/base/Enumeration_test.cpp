#include "base/Enumeration.h"

#include <gtest/gtest.h>

#include <string_view>

#include "sensing/RefreshInterval.h"
#include "sensing/SensorSource.h"

namespace thermopix {
namespace {

TEST(Enumeration, GivesRawValueTitleAndSubtitleOfACase) {
    EXPECT_EQ(rawValue(SensorSource::soc), "soc");
    EXPECT_EQ(title(SensorSource::soc), "SoC");
    EXPECT_EQ(subtitle(SensorSource::soc), "Average of the SoC die sensors.");
}

TEST(Enumeration, FindsTheCaseOfARawValue) {
    EXPECT_EQ(fromRawValue<SensorSource>("battery"), SensorSource::battery);
    EXPECT_EQ(fromRawValue<RefreshInterval>(30), RefreshInterval::thirtySeconds);
}

TEST(Enumeration, HasNoCaseForAnUnknownRawValue) {
    EXPECT_EQ(fromRawValue<SensorSource>("Battery"), std::nullopt);
    EXPECT_EQ(fromRawValue<SensorSource>(""), std::nullopt);
    EXPECT_EQ(fromRawValue<RefreshInterval>(3), std::nullopt);
}

TEST(Enumeration, ListsAllCasesInDeclarationOrder) {
    constexpr auto cases = allCases<SensorSource>();
    ASSERT_EQ(cases.size(), 6U);
    EXPECT_EQ(cases.front(), SensorSource::cpu);
    EXPECT_EQ(cases.back(), SensorSource::hottest);
}

}  // namespace
}  // namespace thermopix
