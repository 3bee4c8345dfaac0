#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "pixels/Rgba.h"

namespace thermopix {

/// The image as the bytes of a PNG file (8-bit RGBA) whose density says `scale` pixels per point of 1/72 inch; none
/// when it cannot be encoded. The same image gives the same bytes.
[[nodiscard]] std::optional<std::string> pngData(const RgbaImage& image, std::int64_t scale);

}  // namespace thermopix
