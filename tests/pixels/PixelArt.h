#pragma once

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "pixels/PixelBitmap.h"
#include "pixels/PixelGlyph.h"

namespace thermopix {

inline PixelGlyph glyphOf(std::initializer_list<std::string_view> rows) {
    return PixelGlyph(std::vector<std::string_view>(rows));
}

inline PixelBitmap bitmapOf(std::initializer_list<std::string_view> rows) {
    const PixelGlyph glyph = glyphOf(rows);
    return {glyph.width(), glyph.height(), glyph.cells()};
}

/// The rows, each followed by a line feed: what `signature()` of the same picture says.
inline std::string art(std::initializer_list<std::string_view> rows) {
    std::string text;
    for (const std::string_view row : rows) {
        text += row;
        text += '\n';
    }
    return text;
}

inline std::string art(const PixelGlyph& glyph) {
    return PixelBitmap(glyph.width(), glyph.height(), glyph.cells()).signature();
}

/// The art rows side by side, as tables of glyphs print them.
inline std::string rowsOf(const PixelGlyph& glyph) {
    std::string rows = art(glyph);
    rows.pop_back();
    std::replace(rows.begin(), rows.end(), '\n', ' ');
    return rows;
}

}  // namespace thermopix
