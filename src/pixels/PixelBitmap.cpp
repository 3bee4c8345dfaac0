#include "pixels/PixelBitmap.h"

#include <algorithm>
#include <utility>

#include "base/Fatal.h"
#include "pixels/CellGrid.h"

namespace thermopix {

PixelBitmap::PixelBitmap(std::int64_t width, std::int64_t height, std::vector<Ink> cells)
    : width_(width), height_(height), cells_(std::move(cells)) {
    require(cells_.size() == CellGrid::cellCount(width_, height_), "a bitmap needs width × height cells");
}

PixelBitmap PixelBitmap::blank(std::int64_t width, std::int64_t height) {
    return {width, height, std::vector<Ink>(CellGrid::cellCount(width, height), Ink::none)};
}

Ink PixelBitmap::at(std::int64_t x, std::int64_t y) const {
    return cells_[CellGrid::index(x, y, width_, height_)];
}

template <typename Picture>
void PixelBitmap::placeCells(const Picture& picture, std::int64_t x, std::int64_t y) {
    require(x >= 0 && y >= 0 && checkedAdd(x, picture.width()) <= width_ && checkedAdd(y, picture.height()) <= height_,
            "picture outside the bitmap");
    for (std::int64_t row = 0; row < picture.height(); ++row) {
        std::copy_n(picture.cells().begin() + row * picture.width(), picture.width(),
                    cells_.begin() + (y + row) * width_ + x);
    }
}

void PixelBitmap::place(const PixelGlyph& picture, std::int64_t x, std::int64_t y) {
    placeCells(picture, x, y);
}

void PixelBitmap::place(const PixelBitmap& picture, std::int64_t x, std::int64_t y) {
    placeCells(picture, x, y);
}

std::string PixelBitmap::signature() const {
    std::string art;
    art.reserve(cells_.size() + static_cast<std::size_t>(height_));
    auto cell = cells_.begin();
    for (std::int64_t y = 0; y < height_; ++y) {
        for (std::int64_t x = 0; x < width_; ++x) {
            art += artCharacter(*cell++);
        }
        art += '\n';
    }
    return art;
}

}  // namespace thermopix
