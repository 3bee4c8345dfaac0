#include "pixels/fonts/FontSheet.h"

#include <cstddef>
#include <string>
#include <utility>

namespace thermopix {

PixelFont fontFromSheet(const ArtSheet& sheet) {
    PixelFont::Glyphs glyphs;
    for (std::size_t i = 0; i < PixelFont::requiredCharacters.size(); ++i) {
        glyphs.emplace(PixelFont::requiredCharacters[i], sheet.picture(i));
    }
    return {static_cast<std::int64_t>(sheet.pictureWidth), static_cast<std::int64_t>(sheet.rows.size()),
            std::move(glyphs)};
}

}  // namespace thermopix
