#include <array>
#include <string_view>

#include "pixels/fonts/FontSheet.h"

namespace thermopix {

namespace {

// The columns are `PixelFont::requiredCharacters`, in their order.
constexpr std::array<std::string_view, 5> rows{
    "###  .#.  ###  ###  #.#  ###  ###  ###  ###  ###  ...  ##.  ###  ###  .#.  ...",
    "#.#  ##.  ..#  ..#  #.#  #..  #..  ..#  #.#  #.#  ...  ##.  #..  #..  .##  ...",
    "#.#  .#.  ###  ###  ###  ###  ###  ..#  ###  ###  ###  ...  #..  ###  ###  ...",
    "#.#  .#.  #..  ..#  ..#  ..#  #.#  ..#  #.#  ..#  ...  ...  #..  #..  #.#  ...",
    "###  ###  ###  ###  ..#  ###  ###  ..#  ###  ###  ...  ...  ###  #..  ###  ...",
};
constexpr ArtSheet sheet{3, rows};
static_assert(sheet.holds(PixelFont::requiredCharacters.size()));

}  // namespace

const PixelFont& PixelFont::micro3x5() {
    static const PixelFont font = fontFromSheet(sheet);
    return font;
}

}  // namespace thermopix
