#include "pixels/StatusImageRenderer.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "pixels/PixelArt.h"
#include "pixels/PixelRasterizer.h"

namespace thermopix {
namespace {

Display celsius(std::int64_t value) {
    return {.value = value, .unit = TemperatureUnit::celsius};
}

TEST(StatusImage, IsAsLargeAsItsCellsInPoints) {
    const PixelBitmap bitmap = PixelBitmap::blank(23, 7);
    const StatusImage compact = StatusImageRenderer::image(bitmap, PixelStyle::arcade, PixelSize::compact);
    EXPECT_EQ(compact.width(), 46.0);
    EXPECT_EQ(compact.height(), 14.0);
    const StatusImage large = StatusImageRenderer::image(bitmap, PixelStyle::arcade, PixelSize::large);
    EXPECT_EQ(large.width(), 69.0);
    EXPECT_EQ(large.height(), 21.0);
}

TEST(StatusImage, IsATemplateOfSquaresWithoutInset) {
    for (const PixelStyle style : {PixelStyle::arcade, PixelStyle::micro, PixelStyle::segment}) {
        const StatusImage image = StatusImageRenderer::image(bitmapOf({"#:"}), style, PixelSize::large);
        EXPECT_TRUE(image.isTemplate);
        EXPECT_FALSE(image.isRound);
        EXPECT_EQ(image.cell, 3.0);
        EXPECT_EQ(image.inset, 0.0);
        EXPECT_EQ(image.bitmap, bitmapOf({"#:"}));
        EXPECT_EQ(image.description, std::nullopt);
    }
}

TEST(StatusImage, IsMadeOfInsetDotsForDotMatrix) {
    const StatusImage compact = StatusImageRenderer::image(bitmapOf({"#"}), PixelStyle::dotMatrix, PixelSize::compact);
    EXPECT_TRUE(compact.isRound);
    EXPECT_EQ(compact.cell - 2 * compact.inset, 1.0);
    const StatusImage large = StatusImageRenderer::image(bitmapOf({"#"}), PixelStyle::dotMatrix, PixelSize::large);
    EXPECT_EQ(large.inset, 0.75);
    EXPECT_EQ(large.cell - 2 * large.inset, 1.5);
}

TEST(StatusImage, OfAnEmptyBitmapIsOneBlankPointAndNoTemplate) {
    for (const PixelBitmap& empty : {PixelBitmap(), PixelBitmap::blank(0, 7), PixelBitmap::blank(5, 0)}) {
        const StatusImage image = StatusImageRenderer::image(empty, PixelStyle::arcade, PixelSize::large);
        EXPECT_TRUE(image.isBlank());
        EXPECT_EQ(image.width(), 1.0);
        EXPECT_EQ(image.height(), 1.0);
        EXPECT_FALSE(image.isTemplate);
    }
}

TEST(StatusImageRenderer, MakesTheReadoutWithItsDescription) {
    Display display = celsius(91);
    display.isHot = true;
    display.mood = PetMood::scorching;
    const Appearance appearance{.style = PixelStyle::dotMatrix, .showsUnitLetter = true};
    const StatusImage image = StatusImageRenderer::image(display, appearance);
    EXPECT_EQ(image.bitmap, PixelRasterizer::bitmap(display, appearance));
    EXPECT_TRUE(image.isTemplate);
    EXPECT_EQ(image.description, "91 degrees Celsius, running hot");
}

TEST(StatusImageRenderer, DrawsTheReadoutWhileThePetBlinks) {
    const auto readout = [](bool blinking) {
        return StatusImageRenderer::image(celsius(55), {.pet = PixelPet::ghost, .blinking = blinking});
    };
    EXPECT_NE(readout(true), readout(false));
    EXPECT_EQ(readout(true).description, readout(false).description);
}

TEST(StatusImageRenderer, PortraysAPetInSquareCells) {
    const StatusImage portrait = StatusImageRenderer::petImage(PixelPet::cat, PetMood::warm, PixelSize::large);
    EXPECT_EQ(portrait.bitmap.signature(), art(*sprite(PixelPet::cat, PetMood::warm, false)));
    EXPECT_EQ(portrait.width(), 24.0);
    EXPECT_EQ(portrait.height(), 21.0);
    EXPECT_FALSE(portrait.isRound);
    EXPECT_TRUE(portrait.isTemplate);
    EXPECT_EQ(portrait.description, "Cat, toasty");
}

TEST(StatusImageRenderer, PortraysNoPetAsTheBlankImage) {
    const StatusImage portrait = StatusImageRenderer::petImage(PixelPet::none, PetMood::warm, PixelSize::large);
    EXPECT_EQ(portrait, StatusImage());
    EXPECT_EQ(portrait.description, std::nullopt);
}

TEST(AccessibilityDescription, SaysTheDegreesAndTheUnit) {
    EXPECT_EQ(StatusImageRenderer::accessibilityDescription(celsius(72), PixelPet::none), "72 degrees Celsius");
    EXPECT_EQ(StatusImageRenderer::accessibilityDescription({.value = -4, .unit = TemperatureUnit::fahrenheit},
                                                            PixelPet::none),
              "-4 degrees Fahrenheit");
}

TEST(AccessibilityDescription, SaysThatTheMachineRunsHotOnlyWithoutAPet) {
    Display display{.value = 163, .unit = TemperatureUnit::fahrenheit, .isHot = true, .mood = PetMood::scorching};
    EXPECT_EQ(StatusImageRenderer::accessibilityDescription(display, PixelPet::none),
              "163 degrees Fahrenheit, running hot");
    EXPECT_EQ(StatusImageRenderer::accessibilityDescription(display, PixelPet::westie),
              "163 degrees Fahrenheit, burning");
}

TEST(AccessibilityDescription, EndsWithThePetsMood) {
    Display display = celsius(50);
    struct Case {
        PetMood mood;
        std::string_view description;
    };
    const std::vector<Case> cases{
        {PetMood::chilly, "50 degrees Celsius, cold"},
        {PetMood::content, "50 degrees Celsius, comfy"},
        {PetMood::warm, "50 degrees Celsius, toasty"},
        {PetMood::scorching, "50 degrees Celsius, burning"},
    };
    for (const auto& expected : cases) {
        display.mood = expected.mood;
        EXPECT_EQ(StatusImageRenderer::accessibilityDescription(display, PixelPet::mac), expected.description);
        EXPECT_EQ(StatusImageRenderer::accessibilityDescription(display, PixelPet::none), "50 degrees Celsius");
    }
}

TEST(AccessibilityDescription, SaysTheThermalStateWhenThereIsNoValue) {
    for (const ThermalPressure pressure : allCases<ThermalPressure>()) {
        const Display display{.value = {}, .pressure = pressure, .isHot = true, .mood = PetMood::scorching};
        const std::string expected =
            "Temperature unavailable. Thermal state " + std::string(row(pressure).lowercaseTitle) + ".";
        EXPECT_EQ(StatusImageRenderer::accessibilityDescription(display, PixelPet::none), expected);
        EXPECT_EQ(StatusImageRenderer::accessibilityDescription(display, PixelPet::cat), expected);
    }
    const Display serious{.value = {}, .pressure = ThermalPressure::serious};
    EXPECT_EQ(StatusImageRenderer::accessibilityDescription(serious, PixelPet::none),
              "Temperature unavailable. Thermal state serious.");
}

}  // namespace
}  // namespace thermopix
