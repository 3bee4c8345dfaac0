#include "pixels/HalfBlocks.h"

#include <gtest/gtest.h>

#include "base/Unicode.h"
#include "pixels/PixelArt.h"
#include "pixels/PixelRasterizer.h"

namespace thermopix {
namespace {

using Lines = std::vector<std::string>;

TEST(HalfBlocks, PutTwoCellsIntoEachColumn) {
    EXPECT_EQ(halfBlockLines(bitmapOf({"##..", "#.#."}), TerminalColor::allowed), (Lines{"█▀▄ "}));
}

TEST(HalfBlocks, LeaveTheLowerHalfOfALastOddRowBlank) {
    EXPECT_EQ(halfBlockLines(bitmapOf({".", "#", "#"}), TerminalColor::allowed), (Lines{"▄", "▀"}));
}

TEST(HalfBlocks, OfAnEmptyBitmapAreNoLines) {
    EXPECT_EQ(halfBlockLines(PixelBitmap(), TerminalColor::allowed), Lines{});
}

TEST(HalfBlocks, ShowGhostInkDim) {
    EXPECT_EQ(halfBlockLines(bitmapOf({"::.#", ":..#"}), TerminalColor::allowed), (Lines{"\033[2m█▀ \033[0m█"}));
    EXPECT_EQ(halfBlockLines(bitmapOf({".", ":"}), TerminalColor::allowed), (Lines{"\033[2m▄\033[0m"}));
}

TEST(HalfBlocks, ShowBothInksOfAColumnByAGreyGround) {
    EXPECT_EQ(halfBlockLines(bitmapOf({"#:.", ":#."}), TerminalColor::allowed), (Lines{"\033[100m▀▄\033[0m "}))
        << "a blank has no ground";
    EXPECT_EQ(halfBlockLines(bitmapOf({"#:", "::"}), TerminalColor::allowed),
              (Lines{"\033[100m▀\033[0m\033[2m█\033[0m"}));
}

TEST(HalfBlocks, LeaveGhostInkOutAndWriteNoEscapeSequenceWhereColourIsAvoided) {
    EXPECT_EQ(halfBlockLines(bitmapOf({"#:.:", ":#:#"}), TerminalColor::avoided), (Lines{"▀▄ ▄"}));
    const Display display{.value = 72, .unit = TemperatureUnit::celsius};
    const PixelBitmap readout =
        PixelRasterizer::bitmap(display, {.style = PixelStyle::segment, .pet = PixelPet::cat, .showsUnitLetter = true});
    for (const std::string& line : halfBlockLines(readout, TerminalColor::avoided)) {
        EXPECT_EQ(line.find('\033'), std::string::npos);
        EXPECT_EQ(characterCount(line), static_cast<std::size_t>(readout.width()));
    }
}

TEST(HalfBlocks, DrawTheReadout) {
    const Display display{.value = 18, .unit = TemperatureUnit::celsius};
    const auto lines = [&](PixelStyle style) {
        return halfBlockLines(PixelRasterizer::bitmap(display, {.style = style}), TerminalColor::allowed);
    };
    EXPECT_EQ(lines(PixelStyle::micro), (Lines{
                                            "▄█  █▀█ ██ ",
                                            " █  █▀█    ",
                                            "▀▀▀ ▀▀▀    ",
                                        }));
    EXPECT_EQ(lines(PixelStyle::segment), (Lines{
                                              "\033[2m▄▀▀\033[0m▄ ▄▀▀▄ ▄▀▀▄",
                                              "\033[2m▀▄▄\033[0m▀ ▀▄▄▀  ▀▀ ",
                                              "\033[2m█  \033[0m█ █  █     ",
                                              " \033[2m▀▀   \033[0m▀▀      ",
                                          }));
}

}  // namespace
}  // namespace thermopix
