#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "pixels/Ink.h"

namespace thermopix {

/// A small immutable picture of ink cells, row-major from the top left.
class PixelGlyph {
public:
    /// `cells` holds exactly width × height inks.
    PixelGlyph(std::int64_t width, std::int64_t height, std::vector<Ink> cells);

    /// From art rows, top row first; short rows are blank on the right.
    explicit PixelGlyph(std::span<const std::string_view> rows);

    [[nodiscard]] std::int64_t width() const { return width_; }
    [[nodiscard]] std::int64_t height() const { return height_; }
    [[nodiscard]] const std::vector<Ink>& cells() const { return cells_; }

    /// The cell at a column and row; an index outside the cells ends the process.
    [[nodiscard]] Ink at(std::int64_t x, std::int64_t y) const;

    /// Placed at the top left of a box of this size: blank cells are added, or cells cropped, right and below.
    [[nodiscard]] PixelGlyph padded(std::int64_t toWidth, std::int64_t toHeight) const;

    friend bool operator==(const PixelGlyph&, const PixelGlyph&) = default;

private:
    std::int64_t width_;
    std::int64_t height_;
    std::vector<Ink> cells_;
};

}  // namespace thermopix
