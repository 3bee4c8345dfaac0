#include "tray/TrayChoices.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

TEST(TrayChoices, EverythingIsAutomaticUnlessChosen) {
    const TrayChoices choices;
    EXPECT_EQ(choices.place, TrayPlace::automatic);
    EXPECT_EQ(choices.shape, TrayShapeChoice::automatic);
    EXPECT_EQ(choices.ink, TrayInkChoice{});
}

TEST(TrayChoices, AnInkIsATone) {
    EXPECT_EQ(trayInkChoice("automatic"), TrayInkChoice{});
    EXPECT_EQ(trayInkChoice("light"), (TrayInkChoice{TrayInkTone::light, {}}));
    EXPECT_EQ(trayInkChoice("dark"), (TrayInkChoice{TrayInkTone::dark, {}}));
    EXPECT_EQ(trayInkChoice("mid"), (TrayInkChoice{TrayInkTone::mid, {}}));
}

TEST(TrayChoices, AnInkIsAColor) {
    EXPECT_EQ(trayInkChoice("#ff8001"), (TrayInkChoice{TrayInkTone::automatic, RgbaColor{255, 128, 1}}));
    EXPECT_EQ(trayInkChoice("#00FF0a"), (TrayInkChoice{TrayInkTone::automatic, RgbaColor{0, 255, 10}}));
}

TEST(TrayChoices, AnythingElseIsNoInk) {
    for (const auto* text : {"", "bright", "Light", "#", "#fff", "#12345", "#1234567", "#12345g", "#-12345", "#+12345",
                             "ff8001", "# ff800"}) {
        EXPECT_EQ(trayInkChoice(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace thermopix
