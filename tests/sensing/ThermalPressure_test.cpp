#include "sensing/ThermalPressure.h"

#include <gtest/gtest.h>

#include <limits>

namespace thermopix {
namespace {

TEST(ThermalPressure, FollowsTheNumberingOfTheSystem) {
    EXPECT_EQ(thermalPressure(0), ThermalPressure::nominal);
    EXPECT_EQ(thermalPressure(1), ThermalPressure::fair);
    EXPECT_EQ(thermalPressure(2), ThermalPressure::serious);
    EXPECT_EQ(thermalPressure(3), ThermalPressure::critical);
}

TEST(ThermalPressure, AnUnknownStateIsNominal) {
    for (const int state : {-1, 4, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_EQ(thermalPressure(state), ThermalPressure::nominal) << state;
    }
}

TEST(ThermalPressure, IsOrderedAndElevatedFromSerious) {
    EXPECT_LT(ThermalPressure::nominal, ThermalPressure::fair);
    EXPECT_LT(ThermalPressure::fair, ThermalPressure::serious);
    EXPECT_LT(ThermalPressure::serious, ThermalPressure::critical);
    EXPECT_FALSE(isElevated(ThermalPressure::nominal));
    EXPECT_FALSE(isElevated(ThermalPressure::fair));
    EXPECT_TRUE(isElevated(ThermalPressure::serious));
    EXPECT_TRUE(isElevated(ThermalPressure::critical));
}

TEST(ThermalPressure, NamesItselfByRawValueAndTitle) {
    EXPECT_EQ(fromRawValue<ThermalPressure>("serious"), ThermalPressure::serious);
    EXPECT_EQ(fromRawValue<ThermalPressure>("hot"), std::nullopt);
    EXPECT_EQ(title(ThermalPressure::critical), "Critical");
    EXPECT_EQ(row(ThermalPressure::critical).lowercaseTitle, "critical");
}

}  // namespace
}  // namespace thermopix
