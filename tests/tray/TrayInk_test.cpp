#include "tray/TrayInk.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

constexpr RgbaColor white{255, 255, 255};
constexpr RgbaColor black{0, 0, 0};

RgbaColor automatic(TrayInkRule rule, const DesktopColors& colors) {
    return trayInk({}, rule, colors).full;
}

RgbaColor chosen(TrayInkTone tone) {
    return trayInk({tone, {}}, TrayInkRule::colorScheme, {}).full;
}

TEST(TrayInk, ContrastIsThatOfWcag) {
    EXPECT_DOUBLE_EQ(contrastRatio(black, white), 21.0);
    EXPECT_DOUBLE_EQ(contrastRatio(white, black), 21.0);
    EXPECT_DOUBLE_EQ(contrastRatio(white, white), 1.0);
    EXPECT_NEAR(contrastRatio({119, 119, 119}, white), 4.48, 0.01);
    EXPECT_NEAR(contrastRatio({255, 0, 0}, white), 4.00, 0.01);
    EXPECT_NEAR(contrastRatio({0, 0, 255}, black), 2.44, 0.01);
}

TEST(TrayInk, LuminanceWeighsTheChannels) {
    EXPECT_DOUBLE_EQ(relativeLuminance(white), 1.0);
    EXPECT_DOUBLE_EQ(relativeLuminance(black), 0.0);
    EXPECT_DOUBLE_EQ(relativeLuminance({255, 0, 0}), 0.2126);
    EXPECT_DOUBLE_EQ(relativeLuminance({0, 255, 0}), 0.7152);
    EXPECT_DOUBLE_EQ(relativeLuminance({0, 0, 255}), 0.0722);
    EXPECT_NEAR(relativeLuminance({10, 10, 10}), 10.0 / 255 / 12.92, 1e-9);
}

TEST(TrayInk, MidInkShowsOnBlackAndOnWhite) {
    const RgbaColor mid = chosen(TrayInkTone::mid);
    EXPECT_GE(contrastRatio(mid, black), 3.0);
    EXPECT_GE(contrastRatio(mid, white), 3.0);
}

TEST(TrayInk, ABarThatIsAlwaysDarkGetsLightInk) {
    EXPECT_EQ(automatic(TrayInkRule::light, {}), white);
    EXPECT_EQ(automatic(TrayInkRule::light, {ColorScheme::light, {}}), white);
}

TEST(TrayInk, OtherBarsFollowTheApplications) {
    EXPECT_EQ(automatic(TrayInkRule::colorScheme, {ColorScheme::dark, {}}), white);
    EXPECT_EQ(automatic(TrayInkRule::colorScheme, {ColorScheme::light, {}}), black);
    EXPECT_EQ(automatic(TrayInkRule::colorScheme, {ColorScheme::light, true}), black);
}

TEST(TrayInk, WithoutAHintTheInkIsMid) {
    EXPECT_EQ(automatic(TrayInkRule::colorScheme, {}), chosen(TrayInkTone::mid));
    EXPECT_EQ(automatic(TrayInkRule::xfcePanel, {ColorScheme::noPreference, false}), chosen(TrayInkTone::mid));
}

TEST(TrayInk, AnXfcePanelIsDarkUnlessItSaysOtherwise) {
    EXPECT_EQ(automatic(TrayInkRule::xfcePanel, {ColorScheme::light, {}}), white);
    EXPECT_EQ(automatic(TrayInkRule::xfcePanel, {ColorScheme::light, true}), white);
    EXPECT_EQ(automatic(TrayInkRule::xfcePanel, {ColorScheme::light, false}), black);
    EXPECT_EQ(automatic(TrayInkRule::xfcePanel, {ColorScheme::dark, false}), white);
}

TEST(TrayInk, AChoiceOverrulesTheBar) {
    const DesktopColors dark{ColorScheme::dark, true};
    EXPECT_EQ(trayInk({TrayInkTone::dark, {}}, TrayInkRule::light, dark).full, black);
    EXPECT_EQ(trayInk({TrayInkTone::light, {}}, TrayInkRule::colorScheme, {ColorScheme::light, {}}).full, white);
    EXPECT_EQ(trayInk({TrayInkTone::mid, {}}, TrayInkRule::light, dark).full, chosen(TrayInkTone::mid));
    const RgbaColor orange{255, 128, 0};
    EXPECT_EQ(trayInk({TrayInkTone::automatic, orange}, TrayInkRule::light, dark).full, orange);
}

TEST(TrayInk, GhostInkIsSolidAndFainterThanFullInkOnItsBar) {
    const TrayInk light = trayInk({TrayInkTone::light, {}}, TrayInkRule::light, {});
    ASSERT_TRUE(light.ghost);
    EXPECT_EQ(light.ghost->alpha, 255);
    EXPECT_LT(contrastRatio(*light.ghost, black), contrastRatio(light.full, black) / 5);
    EXPECT_GT(contrastRatio(*light.ghost, black), 1.5);

    const TrayInk dark = trayInk({TrayInkTone::dark, {}}, TrayInkRule::light, {});
    ASSERT_TRUE(dark.ghost);
    EXPECT_EQ(dark.ghost->alpha, 255);
    EXPECT_LT(contrastRatio(*dark.ghost, white), contrastRatio(dark.full, white) / 5);
    EXPECT_GT(contrastRatio(*dark.ghost, white), 1.5);
}

TEST(TrayInk, GhostInkTakesTheTintOfAChosenColor) {
    const TrayInk orange = trayInk({TrayInkTone::automatic, RgbaColor{255, 128, 0}}, TrayInkRule::light, {});
    ASSERT_TRUE(orange.ghost);
    EXPECT_GT(orange.ghost->red, orange.ghost->green);
    EXPECT_GT(orange.ghost->green, orange.ghost->blue);
}

TEST(TrayInk, MidInkHasNoGhostBecauseNoColorIsFainterOnEveryBar) {
    EXPECT_EQ(trayInk({TrayInkTone::mid, {}}, TrayInkRule::light, {}).ghost, std::nullopt);
}

}  // namespace
}  // namespace thermopix
