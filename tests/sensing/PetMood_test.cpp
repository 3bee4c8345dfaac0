#include "sensing/PetMood.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <optional>

namespace thermopix {
namespace {

constexpr auto nominal = ThermalPressure::nominal;

TEST(PetMood, FollowsTheBandsWithoutAPreviousMood) {
    struct Case {
        double celsius;
        PetMood expected;
    };
    constexpr std::array cases{
        Case{-20, PetMood::chilly},     Case{44.9, PetMood::chilly},   Case{45.0, PetMood::content},
        Case{64.99, PetMood::content},  Case{65.0, PetMood::warm},     Case{84.99, PetMood::warm},
        Case{85.0, PetMood::scorching}, Case{150, PetMood::scorching},
    };
    for (const auto& [celsius, expected] : cases) {
        EXPECT_EQ(mood(celsius, nominal, std::nullopt), expected) << celsius;
        EXPECT_EQ(mood(celsius, ThermalPressure::fair, std::nullopt), expected) << celsius;
    }
}

TEST(PetMood, ElevatedPressureIsScorchingWhateverTheTemperature) {
    EXPECT_EQ(mood(20, ThermalPressure::serious, std::nullopt), PetMood::scorching);
    EXPECT_EQ(mood(20, ThermalPressure::critical, PetMood::chilly), PetMood::scorching);
    EXPECT_EQ(mood(20, ThermalPressure::fair, std::nullopt), PetMood::chilly);
}

TEST(PetMood, FallsOnlyThreeDegreesBelowTheBound) {
    struct Case {
        PetMood previous;
        double celsius;
        PetMood expected;
    };
    constexpr std::array cases{
        Case{PetMood::content, 42.5, PetMood::content}, Case{PetMood::content, 42.0, PetMood::chilly},
        Case{PetMood::warm, 63.0, PetMood::warm},       Case{PetMood::warm, 62.0, PetMood::content},
        Case{PetMood::warm, 40.0, PetMood::chilly},     Case{PetMood::scorching, 82.01, PetMood::scorching},
        Case{PetMood::scorching, 82.0, PetMood::warm},  Case{PetMood::scorching, 60.0, PetMood::content},
        Case{PetMood::chilly, 10.0, PetMood::chilly},
    };
    for (const auto& [previous, celsius, expected] : cases) {
        EXPECT_EQ(mood(celsius, nominal, previous), expected) << rawValue(previous) << " at " << celsius;
    }
}

TEST(PetMood, RisesAtOnce) {
    EXPECT_EQ(mood(45.0, nominal, PetMood::chilly), PetMood::content);
    EXPECT_EQ(mood(85.0, nominal, PetMood::chilly), PetMood::scorching);
    EXPECT_EQ(mood(50.0, nominal, PetMood::content), PetMood::content);
}

TEST(PetMood, ATemperatureThatIsNoNumberIsBelowNoBound) {
    EXPECT_EQ(mood(std::numeric_limits<double>::quiet_NaN(), nominal, std::nullopt), PetMood::scorching);
}

TEST(PetMood, PublishesItsThresholdsFromCoolToHot) {
    const auto thresholds = moodThresholds();
    ASSERT_EQ(thresholds.size(), 3U);
    EXPECT_EQ(thresholds[0].mood, PetMood::chilly);
    EXPECT_EQ(thresholds[0].upperBound, 45.0);
    EXPECT_EQ(thresholds[1].mood, PetMood::content);
    EXPECT_EQ(thresholds[1].upperBound, 65.0);
    EXPECT_EQ(thresholds[2].mood, PetMood::warm);
    EXPECT_EQ(thresholds[2].upperBound, 85.0);
}

TEST(PetMood, HasATitleAndACaptionForEachCase) {
    EXPECT_EQ(fromRawValue<PetMood>("warm"), PetMood::warm);
    EXPECT_EQ(title(PetMood::chilly), "Cold");
    EXPECT_EQ(title(PetMood::content), "Comfy");
    EXPECT_EQ(title(PetMood::warm), "Toasty");
    EXPECT_EQ(title(PetMood::scorching), "Burning");
    EXPECT_EQ(caption(PetMood::chilly), "Barely awake.");
    EXPECT_EQ(caption(PetMood::content), "Perfectly comfortable.");
    EXPECT_EQ(caption(PetMood::warm), "Getting a bit toasty.");
    EXPECT_EQ(caption(PetMood::scorching), "Everything is fine. Everything is FINE.");
}

}  // namespace
}  // namespace thermopix
