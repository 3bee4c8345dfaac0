#include "sensing/TemperatureSmoother.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>

namespace thermopix {
namespace {

constexpr auto celsius = TemperatureUnit::celsius;
constexpr auto fahrenheit = TemperatureUnit::fahrenheit;

TemperatureSmoother freshSmoother() {
    return {0.4, 0.75};
}

TEST(TemperatureSmoother, TheFirstReadingIsShownRounded) {
    auto smoother = freshSmoother();
    EXPECT_EQ(smoother.accept(60.56, celsius), 61);
    EXPECT_EQ(smoother.smoothedCelsius(), 60.56);
    EXPECT_EQ(smoother.displayed(), 61);
    EXPECT_EQ(smoother.displayedUnit(), celsius);
}

TEST(TemperatureSmoother, ASmallMoveOfTheBlendKeepsTheNumber) {
    auto smoother = freshSmoother();
    (void)smoother.accept(60.56, celsius);
    EXPECT_EQ(smoother.accept(61.0, celsius), 61);
    EXPECT_DOUBLE_EQ(smoother.smoothedCelsius().value(), 60.736);
}

TEST(TemperatureSmoother, TheNumberMovesOnceTheBlendIsADeadbandAway) {
    auto smoother = freshSmoother();
    EXPECT_EQ(smoother.accept(50.0, celsius), 50);
    EXPECT_EQ(smoother.accept(51.0, celsius), 50);
    EXPECT_DOUBLE_EQ(smoother.smoothedCelsius().value(), 50.4);
    EXPECT_EQ(smoother.accept(51.0, celsius), 50);
    EXPECT_DOUBLE_EQ(smoother.smoothedCelsius().value(), 50.64);
    EXPECT_EQ(smoother.accept(51.0, celsius), 51);
    EXPECT_DOUBLE_EQ(smoother.smoothedCelsius().value(), 50.784);
}

TEST(TemperatureSmoother, ExactlyADeadbandAwayMoves) {
    TemperatureSmoother smoother(1.0, 0.75);
    (void)smoother.accept(50.0, celsius);
    EXPECT_EQ(smoother.accept(50.74, celsius), 50);
    EXPECT_EQ(smoother.accept(50.75, celsius), 51);
}

TEST(TemperatureSmoother, FollowsAStepByTheWeightOfTheNewest) {
    auto smoother = freshSmoother();
    (void)smoother.accept(50.0, celsius);
    for (const double expected : {54.0, 56.4, 57.84}) {
        (void)smoother.accept(60.0, celsius);
        EXPECT_DOUBLE_EQ(smoother.smoothedCelsius().value(), expected);
    }
}

TEST(TemperatureSmoother, TheDeadbandIsInDisplayDegrees) {
    TemperatureSmoother smoother(1.0, 0.75);
    EXPECT_EQ(smoother.accept(20.0, fahrenheit), 68);
    EXPECT_EQ(smoother.accept(20.41, fahrenheit), 68);
    EXPECT_EQ(smoother.accept(20.45, fahrenheit), 69);
}

TEST(TemperatureSmoother, ShowsFahrenheit) {
    auto smoother = freshSmoother();
    EXPECT_EQ(smoother.accept(100.0, fahrenheit), 212);
    EXPECT_EQ(smoother.smoothedCelsius(), 100.0);
}

TEST(TemperatureSmoother, RoundsHalvesAwayFromZero) {
    struct Case {
        double reading;
        std::int64_t shown;
    };
    for (const auto& [reading, shown] : {Case{37.5, 38}, Case{2.5, 3}, Case{-2.5, -3}, Case{-0.5, -1}, Case{0.49, 0}}) {
        auto smoother = freshSmoother();
        EXPECT_EQ(smoother.accept(reading, celsius), shown) << reading;
    }
}

TEST(TemperatureSmoother, AChangeOfUnitShowsTheBlendAtOnce) {
    auto smoother = freshSmoother();
    EXPECT_EQ(smoother.accept(20.0, celsius), 20);
    EXPECT_EQ(smoother.accept(20.0, fahrenheit), 68);
    EXPECT_EQ(smoother.smoothedCelsius(), 20.0);
    EXPECT_EQ(smoother.displayedUnit(), fahrenheit);
}

TEST(TemperatureSmoother, ForgetsTheBlendOnReset) {
    auto smoother = freshSmoother();
    (void)smoother.accept(20.0, celsius);
    smoother.reset();
    EXPECT_EQ(smoother, freshSmoother());
    EXPECT_EQ(smoother.accept(80.4, celsius), 80);
    EXPECT_EQ(smoother.smoothedCelsius(), 80.4);
}

TEST(TemperatureSmoother, ShowsTheLargestWholeNumbersThatThereAre) {
    auto smoother = freshSmoother();
    EXPECT_EQ(smoother.accept(-0x1p63, celsius), std::numeric_limits<std::int64_t>::min());
    smoother.reset();
    EXPECT_EQ(smoother.accept(0x1p62, celsius), std::int64_t{1} << 62);
}

TEST(TemperatureSmootherDeathTest, AReadingWithoutAWholeNumberIsFatal) {
    constexpr std::array readings{std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                                  -std::numeric_limits<double>::infinity(), 0x1p63, -0x1.0000000000001p63};
    for (const double reading : readings) {
        auto smoother = freshSmoother();
        EXPECT_DEATH((void)smoother.accept(reading, celsius), "Fatal error") << reading;
    }
}

TEST(TemperatureSmootherDeathTest, ANaNAfterAReadingIsFatalToo) {
    auto smoother = freshSmoother();
    (void)smoother.accept(50.0, celsius);
    EXPECT_DEATH((void)smoother.accept(std::numeric_limits<double>::quiet_NaN(), celsius), "Fatal error");
}

}  // namespace
}  // namespace thermopix
