#include "pixels/PixelGlyph.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "base/Fatal.h"
#include "base/Unicode.h"
#include "pixels/CellGrid.h"

namespace thermopix {

namespace {

std::int64_t longestRow(std::span<const std::string_view> rows) {
    std::size_t longest = 0;
    for (const std::string_view row : rows) {
        longest = std::max(longest, characterCount(row));
    }
    return static_cast<std::int64_t>(longest);
}

}  // namespace

PixelGlyph::PixelGlyph(std::int64_t width, std::int64_t height, std::vector<Ink> cells)
    : width_(width), height_(height), cells_(std::move(cells)) {
    require(cells_.size() == CellGrid::cellCount(width_, height_), "a glyph needs width × height cells");
}

PixelGlyph::PixelGlyph(std::span<const std::string_view> rows)
    : width_(longestRow(rows)), height_(static_cast<std::int64_t>(rows.size())) {
    cells_.reserve(CellGrid::cellCount(width_, height_));
    std::size_t endOfRow = 0;
    for (const std::string_view row : rows) {
        endOfRow += static_cast<std::size_t>(width_);
        forEachCharacter(row, [this](std::string_view character) {
            cells_.push_back(character.size() == 1 ? inkFromArt(character.front()) : Ink::none);
        });
        cells_.resize(endOfRow, Ink::none);
    }
}

Ink PixelGlyph::at(std::int64_t x, std::int64_t y) const {
    return cells_[CellGrid::index(x, y, width_, height_)];
}

PixelGlyph PixelGlyph::padded(std::int64_t toWidth, std::int64_t toHeight) const {
    if (toWidth == width_ && toHeight == height_) {
        return *this;
    }
    std::vector<Ink> box(CellGrid::cellCount(toWidth, toHeight), Ink::none);
    const std::int64_t columns = std::min(toWidth, width_);
    const std::int64_t rows = std::min(toHeight, height_);
    for (std::int64_t y = 0; y < rows; ++y) {
        std::copy_n(cells_.begin() + y * width_, columns, box.begin() + y * toWidth);
    }
    return {toWidth, toHeight, std::move(box)};
}

}  // namespace thermopix
