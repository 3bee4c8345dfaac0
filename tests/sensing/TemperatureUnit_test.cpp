#include "sensing/TemperatureUnit.h"

#include <gtest/gtest.h>

#include <optional>

namespace thermopix {
namespace {

TEST(TemperatureUnit, ConvertsFromCelsius) {
    EXPECT_EQ(valueFromCelsius(TemperatureUnit::celsius, 36.6), 36.6);
    EXPECT_EQ(valueFromCelsius(TemperatureUnit::fahrenheit, 100.0), 212.0);
    EXPECT_EQ(valueFromCelsius(TemperatureUnit::fahrenheit, -40.0), -40.0);
    EXPECT_EQ(valueFromCelsius(TemperatureUnit::fahrenheit, 0.0), 32.0);
}

TEST(TemperatureUnit, MultipliesBeforeItDivides) {
    const volatile double celsius = 60.56;
    const volatile double scaled = celsius * 9.0;
    const volatile double divided = scaled / 5.0;
    EXPECT_EQ(valueFromCelsius(TemperatureUnit::fahrenheit, celsius), divided + 32.0);
}

TEST(TemperatureUnit, HasItsTexts) {
    EXPECT_EQ(title(TemperatureUnit::celsius), "Celsius");
    EXPECT_EQ(title(TemperatureUnit::fahrenheit), "Fahrenheit");
    EXPECT_EQ(symbol(TemperatureUnit::celsius), "\u00B0C");
    EXPECT_EQ(symbol(TemperatureUnit::fahrenheit), "\u00B0F");
    EXPECT_EQ(suffix(TemperatureUnit::celsius), "C");
    EXPECT_EQ(suffix(TemperatureUnit::fahrenheit), "F");
    EXPECT_EQ(fromRawValue<TemperatureUnit>("fahrenheit"), TemperatureUnit::fahrenheit);
    EXPECT_EQ(fromRawValue<TemperatureUnit>("kelvin"), std::nullopt);
}

TEST(TemperatureUnit, ReservesTwoDigitsForCelsiusAndThreeForFahrenheit) {
    EXPECT_EQ(digitSlots(TemperatureUnit::celsius), 2);
    EXPECT_EQ(digitSlots(TemperatureUnit::fahrenheit), 3);
}

TEST(TemperatureUnit, KeepsItsWidthInAClosedRange) {
    const auto celsius = fixedWidthCelsiusRange(TemperatureUnit::celsius);
    EXPECT_TRUE(celsius.contains(0.0));
    EXPECT_TRUE(celsius.contains(99.0));
    EXPECT_FALSE(celsius.contains(99.5));
    EXPECT_FALSE(celsius.contains(-0.1));
    const auto fahrenheit = fixedWidthCelsiusRange(TemperatureUnit::fahrenheit);
    EXPECT_TRUE(fahrenheit.contains(150.0));
    EXPECT_FALSE(fahrenheit.contains(150.1));
}

}  // namespace
}  // namespace thermopix
