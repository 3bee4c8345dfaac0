#include <array>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "pixels/ArtSheet.h"
#include "pixels/PixelFont.h"

namespace thermopix {

namespace {

constexpr std::int64_t width = 4;
constexpr std::int64_t height = 7;

struct Cell {
    std::int64_t x;
    std::int64_t y;
};

struct Segment {
    char name;
    std::array<Cell, 2> cells;
};

constexpr std::array segments{
    Segment{'a', {{{1, 0}, {2, 0}}}},  // top bar
    Segment{'b', {{{3, 1}, {3, 2}}}},  // upper right
    Segment{'c', {{{3, 4}, {3, 5}}}},  // lower right
    Segment{'d', {{{1, 6}, {2, 6}}}},  // bottom bar
    Segment{'e', {{{0, 4}, {0, 5}}}},  // lower left
    Segment{'f', {{{0, 1}, {0, 2}}}},  // upper left
    Segment{'g', {{{1, 3}, {2, 3}}}},  // middle bar
};

struct SegmentCharacter {
    std::string_view character;
    std::string_view litSegments;
};

// clang-format off
constexpr std::array segmentCharacters{
    SegmentCharacter{"0", "abcdef"},
    SegmentCharacter{"1", "bc"},
    SegmentCharacter{"2", "abdeg"},
    SegmentCharacter{"3", "abcdg"},
    SegmentCharacter{"4", "bcfg"},
    SegmentCharacter{"5", "acdfg"},
    SegmentCharacter{"6", "acdefg"},
    SegmentCharacter{"7", "abc"},
    SegmentCharacter{"8", "abcdefg"},
    SegmentCharacter{"9", "abcdfg"},
    SegmentCharacter{"-", "g"},
    SegmentCharacter{"C", "adef"},
    SegmentCharacter{"F", "aefg"},
};

// Characters without segments: degree sign, flame and blank.
constexpr std::array<std::string_view, 3> drawnCharacters{"°", "~", " "};
constexpr std::array<std::string_view, 7> drawnRows{
    ".##.  .#..  ....",
    "#..#  .##.  ....",
    ".##.  ###.  ....",
    "....  #.##  ....",
    "....  #..#  ....",
    "....  ##.#  ....",
    "....  .##.  ....",
};
// clang-format on
constexpr ArtSheet drawnSheet{width, drawnRows};
static_assert(drawnSheet.holds(drawnCharacters.size()) && drawnRows.size() == height);
static_assert(segmentCharacters.size() + drawnCharacters.size() == PixelFont::requiredCharacters.size());

/// An unlit segment still shows faintly.
PixelGlyph segmentGlyph(std::string_view litSegments) {
    std::vector<Ink> cells(width * height, Ink::none);
    for (const Segment& segment : segments) {
        const bool isLit = litSegments.find(segment.name) != std::string_view::npos;
        for (const Cell& cell : segment.cells) {
            cells[static_cast<std::size_t>(cell.y * width + cell.x)] = isLit ? Ink::full : Ink::ghost;
        }
    }
    return {width, height, std::move(cells)};
}

PixelFont makeFont() {
    PixelFont::Glyphs glyphs;
    for (const SegmentCharacter& entry : segmentCharacters) {
        glyphs.emplace(entry.character, segmentGlyph(entry.litSegments));
    }
    for (std::size_t i = 0; i < drawnCharacters.size(); ++i) {
        glyphs.emplace(drawnCharacters[i], drawnSheet.picture(i));
    }
    return {width, height, std::move(glyphs)};
}

}  // namespace

const PixelFont& PixelFont::segment4x7() {
    static const PixelFont font = makeFont();
    return font;
}

}  // namespace thermopix
