#include <array>
#include <string_view>

#include "pixels/fonts/FontSheet.h"

namespace thermopix {

namespace {

// The columns are `PixelFont::requiredCharacters`, in their order.
constexpr std::array<std::string_view, 7> rows{
    ".###.  ..#..  .###.  #####  ...#.  #####  ..##.  #####  .###.  .###.  .....  .###.  .###.  #####  ..#..  .....",
    "#...#  .##..  #...#  ...#.  ..##.  #....  .#...  ....#  #...#  #...#  .....  .#.#.  #...#  #....  .###.  .....",
    "#..##  ..#..  ....#  ..#..  .#.#.  ####.  #....  ...#.  #...#  #...#  .....  .###.  #....  #....  .###.  .....",
    "#.#.#  ..#..  ...#.  ...#.  #..#.  ....#  ####.  ..#..  .###.  .####  #####  .....  #....  ####.  #####  .....",
    "##..#  ..#..  ..#..  ....#  #####  ....#  #...#  .#...  #...#  ....#  .....  .....  #....  #....  ##.##  .....",
    "#...#  ..#..  .#...  #...#  ...#.  #...#  #...#  .#...  #...#  ...#.  .....  .....  #...#  #....  ##.##  .....",
    ".###.  .###.  #####  .###.  ...#.  .###.  .###.  .#...  .###.  .##..  .....  .....  .###.  #....  .###.  .....",
};
constexpr ArtSheet sheet{5, rows};
static_assert(sheet.holds(PixelFont::requiredCharacters.size()));

}  // namespace

const PixelFont& PixelFont::arcade5x7() {
    static const PixelFont font = fontFromSheet(sheet);
    return font;
}

}  // namespace thermopix
