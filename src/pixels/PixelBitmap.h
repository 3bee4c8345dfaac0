#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pixels/Ink.h"
#include "pixels/PixelGlyph.h"

namespace thermopix {

/// A grid of ink cells, row-major from the top left; what the rasterizer produces.
class PixelBitmap {
public:
    PixelBitmap() = default;
    /// `cells` holds exactly width × height inks.
    PixelBitmap(std::int64_t width, std::int64_t height, std::vector<Ink> cells);

    /// All cells `none`.
    [[nodiscard]] static PixelBitmap blank(std::int64_t width, std::int64_t height);

    [[nodiscard]] std::int64_t width() const { return width_; }
    [[nodiscard]] std::int64_t height() const { return height_; }
    [[nodiscard]] const std::vector<Ink>& cells() const { return cells_; }

    /// The cell at a column and row; an index outside the cells ends the process.
    [[nodiscard]] Ink at(std::int64_t x, std::int64_t y) const;

    /// Copies all cells of a picture, blank ones too, to a place where it fits.
    void place(const PixelGlyph& picture, std::int64_t x, std::int64_t y);
    void place(const PixelBitmap& picture, std::int64_t x, std::int64_t y);

    /// The art rows, each followed by a line feed; empty for an empty bitmap.
    [[nodiscard]] std::string signature() const;

    friend bool operator==(const PixelBitmap&, const PixelBitmap&) = default;

private:
    template <typename Picture>
    void placeCells(const Picture& picture, std::int64_t x, std::int64_t y);

    std::int64_t width_ = 0;
    std::int64_t height_ = 0;
    std::vector<Ink> cells_;
};

}  // namespace thermopix
