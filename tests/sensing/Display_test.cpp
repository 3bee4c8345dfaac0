#include "sensing/Display.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

constexpr Display shown{61, TemperatureUnit::celsius, ThermalPressure::nominal, false, PetMood::content};

TEST(Display, IsEqualWhenEveryFieldIs) {
    const Display same = shown;
    EXPECT_EQ(same, shown);
}

TEST(Display, DiffersWhenOneFieldDoes) {
    auto other = shown;
    other.value = 62;
    EXPECT_NE(other, shown);
    other.value.reset();
    EXPECT_NE(other, shown);
    other = shown;
    other.unit = TemperatureUnit::fahrenheit;
    EXPECT_NE(other, shown);
    other = shown;
    other.pressure = ThermalPressure::fair;
    EXPECT_NE(other, shown);
    other = shown;
    other.isHot = true;
    EXPECT_NE(other, shown);
    other = shown;
    other.mood = PetMood::warm;
    EXPECT_NE(other, shown);
}

}  // namespace
}  // namespace thermopix
