#include "pixels/ArtSheet.h"

#include <utility>
#include <vector>

namespace thermopix {

PixelGlyph ArtSheet::picture(std::size_t index) const {
    std::vector<Ink> cells;
    cells.reserve(pictureWidth * rows.size());
    for (const std::string_view row : rows) {
        for (const char character : row.substr(index * (pictureWidth + gap), pictureWidth)) {
            cells.push_back(inkFromArt(character));
        }
    }
    return {static_cast<std::int64_t>(pictureWidth), static_cast<std::int64_t>(rows.size()), std::move(cells)};
}

}  // namespace thermopix
