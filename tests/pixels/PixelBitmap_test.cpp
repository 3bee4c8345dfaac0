#include "pixels/PixelBitmap.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "pixels/PixelArt.h"

namespace thermopix {
namespace {

constexpr std::int64_t huge = std::numeric_limits<std::int64_t>::max();

TEST(PixelBitmap, SignsEachRowWithALineFeed) {
    EXPECT_EQ(PixelBitmap(2, 1, {Ink::full, Ink::ghost}).signature(), "#:\n");
    EXPECT_EQ(PixelBitmap::blank(3, 2).signature(), "...\n...\n");
}

TEST(PixelBitmap, IsEmptyUnlessToldOtherwise) {
    EXPECT_EQ(PixelBitmap().width(), 0);
    EXPECT_EQ(PixelBitmap().height(), 0);
    EXPECT_EQ(PixelBitmap().signature(), "");
    EXPECT_EQ(PixelBitmap(), PixelBitmap::blank(0, 0));
}

TEST(PixelBitmap, TakesTheBlankCellsOfAPictureToo) {
    PixelBitmap bitmap = bitmapOf({"####", "####", "####"});
    bitmap.place(glyphOf({".:", "#."}), 2, 1);
    EXPECT_EQ(bitmap.signature(), art({"####", "##.:", "###."}));
    bitmap.place(PixelBitmap::blank(4, 1), 0, 0);
    EXPECT_EQ(bitmap.signature(), art({"....", "##.:", "###."}));
    bitmap.place(PixelBitmap(), 4, 3);
    EXPECT_EQ(bitmap.signature(), art({"....", "##.:", "###."}));
}

TEST(PixelBitmap, AnswersTheInkOfACell) {
    const PixelBitmap bitmap = bitmapOf({"#.", ".:"});
    EXPECT_EQ(bitmap.at(0, 0), Ink::full);
    EXPECT_EQ(bitmap.at(1, 1), Ink::ghost);
}

TEST(PixelBitmapDeathTest, EndsTheProcessForACellOutsideIt) {
    const PixelBitmap bitmap = PixelBitmap::blank(2, 3);
    EXPECT_DEATH((void)bitmap.at(2, 0), "cell outside the grid");
    EXPECT_DEATH((void)bitmap.at(0, 3), "cell outside the grid");
    EXPECT_DEATH((void)bitmap.at(0, -1), "cell outside the grid");
    EXPECT_DEATH((void)PixelBitmap().at(0, 0), "cell outside the grid");
}

TEST(PixelBitmapDeathTest, EndsTheProcessForAPictureThatDoesNotFit) {
    PixelBitmap bitmap = PixelBitmap::blank(3, 3);
    const PixelGlyph picture = glyphOf({"##", "##"});
    EXPECT_DEATH(bitmap.place(picture, 2, 0), "outside the bitmap");
    EXPECT_DEATH(bitmap.place(picture, 0, 2), "outside the bitmap");
    EXPECT_DEATH(bitmap.place(picture, -1, 0), "outside the bitmap");
    EXPECT_DEATH(bitmap.place(picture, huge, 0), "overflow");
}

TEST(PixelBitmapDeathTest, EndsTheProcessForAnImpossibleSize) {
    EXPECT_DEATH(PixelBitmap(2, 2, std::vector<Ink>(5)), "width × height");
    EXPECT_DEATH((void)PixelBitmap::blank(-1, 2), "negative size");
    EXPECT_DEATH((void)PixelBitmap::blank(huge, 2), "overflow");
}

}  // namespace
}  // namespace thermopix
