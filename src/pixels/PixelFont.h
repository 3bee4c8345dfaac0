#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "pixels/PixelGlyph.h"

namespace thermopix {

/// A pixel font whose glyphs all fill the same box. Keys are user-perceived characters in UTF-8.
class PixelFont {
public:
    using Glyphs = std::map<std::string, PixelGlyph, std::less<>>;

    PixelFont(std::int64_t glyphWidth, std::int64_t glyphHeight, Glyphs glyphs);

    [[nodiscard]] std::int64_t glyphWidth() const { return glyphWidth_; }
    [[nodiscard]] std::int64_t glyphHeight() const { return glyphHeight_; }

    /// Null for a character that the font lacks.
    [[nodiscard]] const PixelGlyph* glyph(std::string_view character) const;
    [[nodiscard]] std::set<std::string, std::less<>> characterSet() const;

    /// What every font defines: digits, minus, degree sign, unit letters, flame ("~") and blank.
    static constexpr std::array<std::string_view, 16> requiredCharacters{"0", "1", "2", "3", "4", "5", "6", "7",
                                                                         "8", "9", "-", "°", "C", "F", "~", " "};

    /// Built on first use, shared for the life of the process, safe to read from any thread.
    [[nodiscard]] static const PixelFont& micro3x5();
    [[nodiscard]] static const PixelFont& arcade5x7();
    [[nodiscard]] static const PixelFont& segment4x7();

    friend bool operator==(const PixelFont&, const PixelFont&) = default;

private:
    std::int64_t glyphWidth_;
    std::int64_t glyphHeight_;
    Glyphs glyphs_;
};

}  // namespace thermopix
