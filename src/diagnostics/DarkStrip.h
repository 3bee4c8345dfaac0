#pragma once

#include <cstdint>

#include "pixels/Rgba.h"
#include "pixels/StatusImage.h"

namespace thermopix {

/// Pixels per point of a dark strip.
inline constexpr std::int64_t darkStripScale = 2;

/// A template image as it looks in a dark menu bar: light ink on a strip that is 8 points wider on either side.
[[nodiscard]] RgbaImage darkStrip(const StatusImage& image);

}  // namespace thermopix
