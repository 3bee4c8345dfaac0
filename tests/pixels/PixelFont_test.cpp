#include "pixels/PixelFont.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "pixels/PixelArt.h"

namespace thermopix {
namespace {

struct PrintedGlyph {
    std::string_view character;
    /// Top row first.
    std::string_view rows;
};

using PrintedFont = std::vector<PrintedGlyph>;

const PrintedFont printedMicro{
    {"0", "### #.# #.# #.# ###"}, {"1", ".#. ##. .#. .#. ###"}, {"2", "### ..# ### #.. ###"},
    {"3", "### ..# ### ..# ###"}, {"4", "#.# #.# ### ..# ..#"}, {"5", "### #.. ### ..# ###"},
    {"6", "### #.. ### #.# ###"}, {"7", "### ..# ..# ..# ..#"}, {"8", "### #.# ### #.# ###"},
    {"9", "### #.# ### ..# ###"}, {"-", "... ... ### ... ..."}, {"°", "##. ##. ... ... ..."},
    {"C", "### #.. #.. #.. ###"}, {"F", "### #.. ### #.. #.."}, {"~", ".#. .## ### #.# ###"},
    {" ", "... ... ... ... ..."},
};

const PrintedFont printedArcade{
    {"0", ".###. #...# #..## #.#.# ##..# #...# .###."}, {"1", "..#.. .##.. ..#.. ..#.. ..#.. ..#.. .###."},
    {"2", ".###. #...# ....# ...#. ..#.. .#... #####"}, {"3", "##### ...#. ..#.. ...#. ....# #...# .###."},
    {"4", "...#. ..##. .#.#. #..#. ##### ...#. ...#."}, {"5", "##### #.... ####. ....# ....# #...# .###."},
    {"6", "..##. .#... #.... ####. #...# #...# .###."}, {"7", "##### ....# ...#. ..#.. .#... .#... .#..."},
    {"8", ".###. #...# #...# .###. #...# #...# .###."}, {"9", ".###. #...# #...# .#### ....# ...#. .##.."},
    {"-", "..... ..... ..... ##### ..... ..... ....."}, {"°", ".###. .#.#. .###. ..... ..... ..... ....."},
    {"C", ".###. #...# #.... #.... #.... #...# .###."}, {"F", "##### #.... #.... ####. #.... #.... #...."},
    {"~", "..#.. .###. .###. ##### ##.## ##.## .###."}, {" ", "..... ..... ..... ..... ..... ..... ....."},
};

const PrintedFont printedSegment{
    {"0", ".##. #..# #..# .::. #..# #..# .##."}, {"1", ".::. :..# :..# .::. :..# :..# .::."},
    {"2", ".##. :..# :..# .##. #..: #..: .##."}, {"3", ".##. :..# :..# .##. :..# :..# .##."},
    {"4", ".::. #..# #..# .##. :..# :..# .::."}, {"5", ".##. #..: #..: .##. :..# :..# .##."},
    {"6", ".##. #..: #..: .##. #..# #..# .##."}, {"7", ".##. :..# :..# .::. :..# :..# .::."},
    {"8", ".##. #..# #..# .##. #..# #..# .##."}, {"9", ".##. #..# #..# .##. :..# :..# .##."},
    {"-", ".::. :..: :..: .##. :..: :..: .::."}, {"°", ".##. #..# .##. .... .... .... ...."},
    {"C", ".##. #..: #..: .::. #..: #..: .##."}, {"F", ".##. #..: #..: .##. #..: #..: .::."},
    {"~", ".#.. .##. ###. #.## #..# ##.# .##."}, {" ", ".... .... .... .... .... .... ...."},
};

struct FontCase {
    std::string_view name;
    const PixelFont& font;
    std::int64_t width;
    std::int64_t height;
    const PrintedFont& printed;
};

class EveryPixelFont : public testing::TestWithParam<FontCase> {};

TEST_P(EveryPixelFont, DrawsEachCharacterAsPrinted) {
    const auto& [name, font, width, height, printed] = GetParam();
    ASSERT_EQ(printed.size(), PixelFont::requiredCharacters.size());
    for (const PrintedGlyph& expected : printed) {
        const PixelGlyph* glyph = font.glyph(expected.character);
        ASSERT_NE(glyph, nullptr) << expected.character;
        EXPECT_EQ(rowsOf(*glyph), expected.rows) << expected.character;
    }
}

TEST_P(EveryPixelFont, HasTheRequiredCharactersAndNoOthers) {
    const std::set<std::string, std::less<>> required(PixelFont::requiredCharacters.begin(),
                                                      PixelFont::requiredCharacters.end());
    EXPECT_EQ(required.size(), 16U);
    EXPECT_EQ(GetParam().font.characterSet(), required);
    EXPECT_EQ(GetParam().font.glyph("X"), nullptr);
    EXPECT_EQ(GetParam().font.glyph(""), nullptr);
    EXPECT_EQ(GetParam().font.glyph("00"), nullptr);
}

TEST_P(EveryPixelFont, FillsItsBoxWithEveryGlyph) {
    const FontCase& fontCase = GetParam();
    EXPECT_EQ(fontCase.font.glyphWidth(), fontCase.width);
    EXPECT_EQ(fontCase.font.glyphHeight(), fontCase.height);
    for (const std::string_view character : PixelFont::requiredCharacters) {
        const PixelGlyph* glyph = fontCase.font.glyph(character);
        ASSERT_NE(glyph, nullptr) << character;
        EXPECT_EQ(glyph->width(), fontCase.width) << character;
        EXPECT_EQ(glyph->height(), fontCase.height) << character;
    }
}

INSTANTIATE_TEST_SUITE_P(Pixels, EveryPixelFont,
                         testing::Values(FontCase{"micro", PixelFont::micro3x5(), 3, 5, printedMicro},
                                         FontCase{"arcade", PixelFont::arcade5x7(), 5, 7, printedArcade},
                                         FontCase{"segment", PixelFont::segment4x7(), 4, 7, printedSegment}),
                         [](const auto& fontCase) { return std::string(fontCase.param.name); });

std::ptrdiff_t count(const PixelGlyph* glyph, Ink ink) {
    return std::count(glyph->cells().begin(), glyph->cells().end(), ink);
}

TEST(PixelFont, ShowsUnlitSegmentsAsGhosts) {
    const PixelFont& font = PixelFont::segment4x7();
    EXPECT_EQ(count(font.glyph("8"), Ink::ghost), 0);
    EXPECT_EQ(count(font.glyph("1"), Ink::full), 4);
    EXPECT_EQ(count(font.glyph("1"), Ink::ghost), 10);
    EXPECT_EQ(count(font.glyph("-"), Ink::full), 2);
    EXPECT_EQ(font.glyph("-")->at(1, 3), Ink::full);
    EXPECT_EQ(font.glyph("-")->at(2, 3), Ink::full);
}

TEST(PixelFont, IsBuiltOnceAndShared) {
    EXPECT_EQ(&PixelFont::micro3x5(), &PixelFont::micro3x5());
    EXPECT_NE(PixelFont::micro3x5(), PixelFont::arcade5x7());
}

TEST(PixelFont, MayBeEmpty) {
    const PixelFont font(3, 5, {});
    EXPECT_EQ(font.glyph("0"), nullptr);
    EXPECT_TRUE(font.characterSet().empty());
}

TEST(PixelFontDeathTest, EndsTheProcessForAGlyphThatDoesNotFillTheBox) {
    EXPECT_DEATH(PixelFont(3, 5, {{"0", glyphOf({"###"})}}), "fills the font's box");
}

}  // namespace
}  // namespace thermopix
