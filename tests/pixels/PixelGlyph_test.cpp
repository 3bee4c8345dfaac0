#include "pixels/PixelGlyph.h"

#include <gtest/gtest.h>

#include <vector>

#include "pixels/PixelArt.h"

namespace thermopix {
namespace {

using Cells = std::vector<Ink>;

TEST(PixelGlyph, PadsShortRowsOnTheRight) {
    const PixelGlyph glyph = glyphOf({"#.", ":"});
    EXPECT_EQ(glyph.width(), 2);
    EXPECT_EQ(glyph.height(), 2);
    EXPECT_EQ(glyph.cells(), (Cells{Ink::full, Ink::none, Ink::ghost, Ink::none}));
}

TEST(PixelGlyph, OfNoRowsIsEmpty) {
    const PixelGlyph glyph = glyphOf({});
    EXPECT_EQ(glyph.width(), 0);
    EXPECT_EQ(glyph.height(), 0);
    EXPECT_TRUE(glyph.cells().empty());
}

TEST(PixelGlyph, OfEmptyRowsHasHeightButNoCells) {
    const PixelGlyph glyph = glyphOf({"", ""});
    EXPECT_EQ(glyph.width(), 0);
    EXPECT_EQ(glyph.height(), 2);
    EXPECT_TRUE(glyph.cells().empty());
}

TEST(PixelGlyph, ReadsUnknownCharactersAsBlankCells) {
    EXPECT_EQ(art(glyphOf({"x# #"})), ".#.#\n");
}

TEST(PixelGlyph, CountsUserPerceivedCharactersNotBytes) {
    EXPECT_EQ(art(glyphOf({"°👩‍🚀#", "#"})), art({"..#", "#.."}));
    EXPECT_EQ(art(glyphOf({"#\u0301#"})), ".#\n") << "a marked character is another character";
    EXPECT_EQ(art(glyphOf({"\r\n#"})), ".#\n") << "carriage return and line feed are perceived as one";
    EXPECT_EQ(art(glyphOf({"\xff\xfe#"})), "..#\n");
}

TEST(PixelGlyph, AnswersTheInkOfACell) {
    const PixelGlyph glyph = glyphOf({"#..", "..:"});
    EXPECT_EQ(glyph.at(0, 0), Ink::full);
    EXPECT_EQ(glyph.at(1, 0), Ink::none);
    EXPECT_EQ(glyph.at(2, 1), Ink::ghost);
}

TEST(PixelGlyph, KeepsItsArtInTheTopLeftCornerOfALargerBox) {
    EXPECT_EQ(art(glyphOf({"###", "#.#", "#:#", "#.#", "###"}).padded(5, 7)), art({
                                                                                  "###..",
                                                                                  "#.#..",
                                                                                  "#:#..",
                                                                                  "#.#..",
                                                                                  "###..",
                                                                                  ".....",
                                                                                  ".....",
                                                                              }));
}

TEST(PixelGlyph, IsCroppedOnTheRightAndBelowByASmallerBox) {
    const PixelGlyph glyph = glyphOf({"#:.", ".#:", ":.#"});
    EXPECT_EQ(art(glyph.padded(2, 1)), art({"#:"}));
    EXPECT_EQ(art(glyph.padded(4, 2)), art({"#:..", ".#:."}));
    EXPECT_EQ(art(glyph.padded(1, 4)), art({"#", ".", ":", "."}));
    EXPECT_EQ(glyph.padded(0, 0), glyphOf({}));
}

TEST(PixelGlyph, IsUnchangedByABoxOfItsOwnSize) {
    const PixelGlyph glyph = glyphOf({"#:", ".#"});
    EXPECT_EQ(glyph.padded(2, 2), glyph);
}

TEST(PixelGlyph, EqualsAPictureOfTheSameShapeAndCellsOnly) {
    const Cells cells{Ink::full, Ink::none};
    EXPECT_EQ(PixelGlyph(2, 1, cells), glyphOf({"#."}));
    EXPECT_NE(PixelGlyph(2, 1, cells), PixelGlyph(1, 2, cells));
    EXPECT_NE(glyphOf({"#."}), glyphOf({"#:"}));
}

TEST(PixelGlyphDeathTest, EndsTheProcessForACellOutsideIt) {
    const PixelGlyph glyph = glyphOf({"##", "##"});
    EXPECT_DEATH((void)glyph.at(2, 0), "cell outside the grid");
    EXPECT_DEATH((void)glyph.at(0, 2), "cell outside the grid");
    EXPECT_DEATH((void)glyph.at(-1, 1), "cell outside the grid");
    EXPECT_DEATH((void)glyph.at(1, -1), "cell outside the grid");
}

TEST(PixelGlyphDeathTest, EndsTheProcessWhenCellsAndSizeDisagree) {
    EXPECT_DEATH(PixelGlyph(2, 2, Cells(3)), "width × height");
    EXPECT_DEATH(PixelGlyph(-1, -1, Cells(1)), "negative size");
    EXPECT_DEATH((void)glyphOf({"#"}).padded(-1, 1), "negative size");
}

}  // namespace
}  // namespace thermopix
