#pragma once

#include <cstddef>
#include <cstdint>

#include "base/Fatal.h"

/// The arithmetic that glyphs, bitmaps and raster images share: a grid of cells, row-major from the top left.
namespace thermopix::CellGrid {

/// Ends the process for a negative size or one that no array can have.
[[nodiscard]] inline std::size_t cellCount(std::int64_t width, std::int64_t height) {
    require(width >= 0 && height >= 0, "a grid cannot have a negative size");
    return static_cast<std::size_t>(checkedMultiply(width, height));
}

/// Ends the process outside the grid.
[[nodiscard]] inline std::size_t index(std::int64_t x, std::int64_t y, std::int64_t width, std::int64_t height) {
    require(0 <= x && x < width && 0 <= y && y < height, "cell outside the grid");
    return static_cast<std::size_t>(y * width + x);
}

}  // namespace thermopix::CellGrid
