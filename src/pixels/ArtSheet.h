#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "pixels/PixelGlyph.h"

namespace thermopix {

/// Pictures of one size drawn side by side, two spaces apart: how glyphs and sprites are written in the source. The
/// rows are constants that live as long as the process.
struct ArtSheet {
    static constexpr std::size_t gap = 2;

    std::size_t pictureWidth;
    std::span<const std::string_view> rows;

    /// True when every row draws `count` pictures in "#", ":" and "." and leaves the gaps empty.
    [[nodiscard]] constexpr bool holds(std::size_t count) const {
        for (const std::string_view row : rows) {
            if (row.size() != count * (pictureWidth + gap) - gap) {
                return false;
            }
            for (std::size_t column = 0; column < row.size(); ++column) {
                const bool isGap = column % (pictureWidth + gap) >= pictureWidth;
                const std::string_view allowed = isGap ? " " : "#:.";
                if (allowed.find(row[column]) == std::string_view::npos) {
                    return false;
                }
            }
        }
        return true;
    }

    /// The picture at this place, counted from the left.
    [[nodiscard]] PixelGlyph picture(std::size_t index) const;
};

}  // namespace thermopix
