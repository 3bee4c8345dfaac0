#include "pixels/PixelRasterizer.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string_view>
#include <vector>

#include "pixels/PixelArt.h"

namespace thermopix {
namespace {

Display celsius(std::optional<std::int64_t> value) {
    return {.value = value, .unit = TemperatureUnit::celsius};
}

Display fahrenheit(std::optional<std::int64_t> value) {
    return {.value = value, .unit = TemperatureUnit::fahrenheit};
}

Display hot(Display display) {
    display.isHot = true;
    display.mood = PetMood::scorching;
    return display;
}

PixelBitmap readout(const Display& display, PixelStyle style, PixelPet pet = PixelPet::none,
                    bool showsUnitLetter = true) {
    return PixelRasterizer::bitmap(display, {.style = style, .pet = pet, .showsUnitLetter = showsUnitLetter});
}

TEST(PixelRasterizerText, RightAlignsTheValueInTheDigitsOfItsUnit) {
    EXPECT_EQ(PixelRasterizer::text(celsius(72), true, true), "72°C");
    EXPECT_EQ(PixelRasterizer::text(celsius(7), true, true), " 7°C");
    EXPECT_EQ(PixelRasterizer::text(fahrenheit(98), false, true), " 98°");
    EXPECT_EQ(PixelRasterizer::text(fahrenheit(5), true, true), "  5°F");
    EXPECT_EQ(PixelRasterizer::text(celsius(0), false, false), " 0°");
}

TEST(PixelRasterizerText, KeepsALongerValueWhole) {
    EXPECT_EQ(PixelRasterizer::text(celsius(100), true, false), "100°C");
    EXPECT_EQ(PixelRasterizer::text(celsius(-12), false, false), "-12°");
    EXPECT_EQ(PixelRasterizer::text(celsius(-5), false, false), "-5°");
    EXPECT_EQ(PixelRasterizer::text(fahrenheit(1234), true, false), "1234°F");
    EXPECT_EQ(PixelRasterizer::text(celsius(std::numeric_limits<std::int64_t>::min()), false, false),
              "-9223372036854775808°");
}

TEST(PixelRasterizerText, ShowsADashForEachDigitWhenThereIsNoValue) {
    EXPECT_EQ(PixelRasterizer::text(celsius(std::nullopt), false, true), "--°");
    EXPECT_EQ(PixelRasterizer::text(fahrenheit(std::nullopt), true, true), "---°F");
}

TEST(PixelRasterizerText, PutsTheFlameBetweenDigitsAndDegreeSignWhenHotAndWanted) {
    EXPECT_EQ(PixelRasterizer::text(hot(celsius(91)), true, true), "91~°C");
    EXPECT_EQ(PixelRasterizer::text(hot(celsius(91)), true, false), "91°C");
    EXPECT_EQ(PixelRasterizer::text(hot(celsius(std::nullopt)), false, true), "--~°");
    EXPECT_EQ(PixelRasterizer::text(celsius(91), true, true), "91°C");
}

TEST(PixelRasterizerLine, OfNoTextIsEmpty) {
    const PixelBitmap line = PixelRasterizer::bitmap("", PixelFont::arcade5x7(), 1);
    EXPECT_EQ(line, PixelBitmap());
}

TEST(PixelRasterizerLine, SetsGlyphsSideBySide) {
    EXPECT_EQ(PixelRasterizer::bitmap("12", PixelFont::micro3x5(), 1).signature(), art({
                                                                                       ".#..###",
                                                                                       "##....#",
                                                                                       ".#..###",
                                                                                       ".#..#..",
                                                                                       "###.###",
                                                                                   }));
    EXPECT_EQ(PixelRasterizer::bitmap("1-", PixelFont::micro3x5(), 0).signature(), art({
                                                                                       ".#....",
                                                                                       "##....",
                                                                                       ".#.###",
                                                                                       ".#....",
                                                                                       "###...",
                                                                                   }));
}

TEST(PixelRasterizerLine, LeavesABlankSlotForACharacterThatTheFontLacks) {
    const PixelBitmap blank = PixelRasterizer::bitmap("1 1", PixelFont::micro3x5(), 1);
    for (const std::string_view text : {"1X1", "1ß1", "1👩‍🚀1",
                                        "1\xff"
                                        "1"}) {
        EXPECT_EQ(PixelRasterizer::bitmap(text, PixelFont::micro3x5(), 1), blank) << text;
    }
    const PixelFont onlyOne(3, 5, {{"1", *PixelFont::micro3x5().glyph("1")}});
    EXPECT_EQ(PixelRasterizer::bitmap("1X1", onlyOne, 1), blank) << "even without a blank glyph";
}

TEST(PixelRasterizerLine, UsesTheFontsOwnBlankForACharacterThatItLacks) {
    const PixelFont font(1, 1, {{" ", glyphOf({":"})}, {"1", glyphOf({"#"})}});
    EXPECT_EQ(PixelRasterizer::bitmap("1X", font, 1).signature(), "#.:\n");
}

TEST(PixelRasterizerLineDeathTest, EndsTheProcessWhenTheWidthOverflows) {
    EXPECT_DEATH((void)PixelRasterizer::bitmap("111", PixelFont::micro3x5(), std::numeric_limits<std::int64_t>::max()),
                 "overflow");
}

TEST(PixelRasterizer, SetsTheReadoutInEveryStyle) {
    EXPECT_EQ(readout(celsius(72), PixelStyle::arcade).signature(), art({
                                                                        "#####..###...###...###.",
                                                                        "....#.#...#..#.#..#...#",
                                                                        "...#......#..###..#....",
                                                                        "..#......#........#....",
                                                                        ".#......#.........#....",
                                                                        ".#.....#..........#...#",
                                                                        ".#....#####........###.",
                                                                    }));
    EXPECT_EQ(readout(celsius(72), PixelStyle::dotMatrix), readout(celsius(72), PixelStyle::arcade));
    EXPECT_EQ(readout(celsius(72), PixelStyle::micro).signature(), art({
                                                                       "###.###.##..###",
                                                                       "..#...#.##..#..",
                                                                       "..#.###.....#..",
                                                                       "..#.#.......#..",
                                                                       "..#.###.....###",
                                                                   }));
    EXPECT_EQ(readout(celsius(72), PixelStyle::segment).signature(), art({
                                                                         ".##...##...##...##.",
                                                                         ":..#.:..#.#..#.#..:",
                                                                         ":..#.:..#..##..#..:",
                                                                         ".::...##........::.",
                                                                         ":..#.#..:......#..:",
                                                                         ":..#.#..:......#..:",
                                                                         ".::...##........##.",
                                                                     }));
}

TEST(PixelRasterizer, PutsThePetOnTheLeft) {
    EXPECT_EQ(readout(celsius(72), PixelStyle::arcade, PixelPet::cat).signature(),
              art({
                  "##....##..#####..###...###...###.",
                  "########......#.#...#..#.#..#...#",
                  "##.##.##.....#......#..###..#....",
                  "########....#......#........#....",
                  "###..###...#......#.........#....",
                  "########...#.....#..........#...#",
                  ".######....#....#####........###.",
              }));
}

TEST(PixelRasterizer, CentresShorterTextBesideThePet) {
    EXPECT_EQ(readout(celsius(72), PixelStyle::micro, PixelPet::mac).signature(), art({
                                                                                      "########.................",
                                                                                      "##.##.##..###.###.##..###",
                                                                                      "########....#...#.##..#..",
                                                                                      "##....##....#.###.....#..",
                                                                                      "########....#.#.......#..",
                                                                                      "...##.......#.###.....###",
                                                                                      ".######..................",
                                                                                  }));
}

TEST(PixelRasterizer, ShowsTheFlameOnlyWithoutAPet) {
    const Display display = hot(celsius(91));
    EXPECT_EQ(readout(display, PixelStyle::micro).signature(), art({
                                                                   "###..#...#..##..###",
                                                                   "#.#.##...##.##..#..",
                                                                   "###..#..###.....#..",
                                                                   "..#..#..#.#.....#..",
                                                                   "###.###.###.....###",
                                                               }));
    EXPECT_EQ(readout(display, PixelStyle::micro, PixelPet::cat).width(), 25) << "no flame";
}

TEST(PixelRasterizer, HasASizeThatFollowsFromItsText) {
    struct Case {
        PixelStyle style;
        PixelPet pet;
        std::int64_t width;
        std::int64_t height;
    };
    const std::vector<Case> cases{
        {PixelStyle::arcade, PixelPet::none, 23, 7},    {PixelStyle::arcade, PixelPet::cat, 33, 7},
        {PixelStyle::dotMatrix, PixelPet::none, 23, 7}, {PixelStyle::dotMatrix, PixelPet::ghost, 33, 7},
        {PixelStyle::micro, PixelPet::none, 15, 5},     {PixelStyle::micro, PixelPet::cat, 25, 7},
        {PixelStyle::segment, PixelPet::none, 19, 7},   {PixelStyle::segment, PixelPet::westie, 29, 7},
    };
    for (const auto& expected : cases) {
        const PixelBitmap bitmap = readout(celsius(72), expected.style, expected.pet);
        EXPECT_EQ(bitmap.width(), expected.width) << rawValue(expected.style);
        EXPECT_EQ(bitmap.height(), expected.height) << rawValue(expected.style);
    }
}

TEST(PixelRasterizer, KeepsItsWidthWhenTheReadingGoesAway) {
    for (const PixelStyle style : allCases<PixelStyle>()) {
        EXPECT_EQ(readout(celsius(std::nullopt), style).width(), readout(celsius(72), style).width());
        EXPECT_EQ(readout(fahrenheit(std::nullopt), style).width(), readout(fahrenheit(98), style).width());
    }
}

TEST(PixelRasterizer, ClosesThePetsEyesWhileBlinking) {
    const Display display = celsius(72);
    const PixelBitmap open = PixelRasterizer::bitmap(display, {.pet = PixelPet::cat});
    const PixelBitmap closed = PixelRasterizer::bitmap(display, {.pet = PixelPet::cat, .blinking = true});
    EXPECT_NE(open, closed);
    PixelBitmap expected = open;
    expected.place(*sprite(PixelPet::cat, PetMood::content, true), 0, 0);
    EXPECT_EQ(closed, expected);
}

TEST(PixelRasterizerDigits, AreTheBareNumberInTheMicroFont) {
    EXPECT_EQ(PixelRasterizer::digitsBitmap(celsius(72)).signature(), art({
                                                                          "###.###",
                                                                          "..#...#",
                                                                          "..#.###",
                                                                          "..#.#..",
                                                                          "..#.###",
                                                                      }));
    EXPECT_EQ(PixelRasterizer::digitsBitmap(hot(fahrenheit(163))).width(), 11) << "no flame, no degree sign";
}

TEST(PixelRasterizerDigits, AreNotPadded) {
    EXPECT_EQ(PixelRasterizer::digitsBitmap(fahrenheit(7)).width(), 3);
    EXPECT_EQ(PixelRasterizer::digitsBitmap(celsius(-5)).signature(), art({
                                                                          "....###",
                                                                          "....#..",
                                                                          "###.###",
                                                                          "......#",
                                                                          "....###",
                                                                      }));
}

TEST(PixelRasterizerDigits, AreDashesWhenThereIsNoValue) {
    EXPECT_EQ(PixelRasterizer::digitsBitmap(celsius(std::nullopt)).signature(), art({
                                                                                    ".......",
                                                                                    ".......",
                                                                                    "###.###",
                                                                                    ".......",
                                                                                    ".......",
                                                                                }));
    EXPECT_EQ(PixelRasterizer::digitsBitmap(fahrenheit(std::nullopt)).width(), 11);
}

}  // namespace
}  // namespace thermopix
