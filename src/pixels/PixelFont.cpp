#include "pixels/PixelFont.h"

#include <utility>

#include "base/Fatal.h"

namespace thermopix {

PixelFont::PixelFont(std::int64_t glyphWidth, std::int64_t glyphHeight, Glyphs glyphs)
    : glyphWidth_(glyphWidth), glyphHeight_(glyphHeight), glyphs_(std::move(glyphs)) {
    for (const auto& [character, glyph] : glyphs_) {
        require(glyph.width() == glyphWidth_ && glyph.height() == glyphHeight_, "every glyph fills the font's box");
    }
}

const PixelGlyph* PixelFont::glyph(std::string_view character) const {
    const auto entry = glyphs_.find(character);
    return entry == glyphs_.end() ? nullptr : &entry->second;
}

std::set<std::string, std::less<>> PixelFont::characterSet() const {
    std::set<std::string, std::less<>> characters;
    for (const auto& [character, glyph] : glyphs_) {
        characters.insert(character);
    }
    return characters;
}

}  // namespace thermopix
