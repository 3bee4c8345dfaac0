#include "pixels/pets/PetSprites.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace thermopix {

namespace {

using Rows = std::array<std::string_view, petHeight>;

// clang-format off
constexpr Rows catRows{
    // chilly    content   warm      scorching blink
    "##....##  ##....##  ##....##  ##....##  ##....##",
    "########  ########  ########  ########  ########",
    "#..##..#  ##.##.##  #..##..#  #.####.#  #..##..#",
    "########  ########  #..##..#  ##.##.##  ########",
    "###..###  ###..###  ########  ########  ###..###",
    "########  ########  ##....##  ##....##  ########",
    ".######.  .######.  .######.  .######.  .######.",
};

constexpr Rows westieRows{
    // chilly    content   warm      scorching blink
    ".##..##.  .##..##.  .##..##.  .##..##.  .##..##.",
    ".##..##.  .##..##.  .##..##.  .##..##.  .##..##.",
    "########  ########  ########  ########  ########",
    "#..##..#  ##.##.##  #..##..#  #.####.#  #..##..#",
    "########  ########  #..##..#  ##.##.##  ########",
    "###..###  ###..###  ##....##  ##....##  ###..###",
    ".######.  .######.  ##.##.##  ##.##.##  .######.",
};

constexpr Rows macRows{
    // chilly    content   warm      scorching blink
    "########  ########  ########  ########  ########",
    "#..##..#  ##.##.##  #..##..#  #.####.#  #..##..#",
    "########  ########  #..##..#  ##.##.##  ########",
    "###..###  ##....##  ###..###  ##....##  ##....##",
    "########  ########  ########  ########  ########",
    "...##...  ...##...  ...##...  ...##...  ...##...",
    ".######.  .######.  .######.  .######.  .######.",
};

constexpr Rows ghostRows{
    // chilly    content   warm      scorching blink
    "..####..  ..####..  ..####..  ..####..  ..####..",
    ".######.  .######.  .######.  .######.  .######.",
    "########  ########  #..##..#  #.####.#  ########",
    "#..##..#  ##.##.##  #..##..#  ##.##.##  #..##..#",
    "########  ########  ########  ########  ########",
    "########  ########  ##....##  ##....##  ########",
    "#.##.##.  #.##.##.  #.##.##.  #.##.##.  #.##.##.",
};
// clang-format on

constexpr std::size_t frameCount = caseCount<PetMood> + 1;

constexpr ArtSheet sheet(const Rows& rows) {
    return {petWidth, rows};
}
static_assert(sheet(catRows).holds(frameCount));
static_assert(sheet(westieRows).holds(frameCount));
static_assert(sheet(macRows).holds(frameCount));
static_assert(sheet(ghostRows).holds(frameCount));

}  // namespace

std::optional<ArtSheet> petSheet(PixelPet pet) {
    switch (pet) {
        case PixelPet::none:
            return std::nullopt;
        case PixelPet::cat:
            return sheet(catRows);
        case PixelPet::westie:
            return sheet(westieRows);
        case PixelPet::mac:
            return sheet(macRows);
        case PixelPet::ghost:
            return sheet(ghostRows);
    }
    return std::nullopt;
}

}  // namespace thermopix
