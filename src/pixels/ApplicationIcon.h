#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "pixels/Rgba.h"

/// The program's icon: the cat in warm colours on a dark tile.
namespace thermopix {

/// The sizes that desktops ask for, in pixels; the largest is a Mac's, at its double scale.
inline constexpr std::array<std::int64_t, 10> applicationIconSides{16, 22, 24, 32, 48, 64, 128, 256, 512, 1024};

/// At any size of at least 16 pixels; cells are whole pixels.
[[nodiscard]] RgbaImage applicationIcon(std::int64_t side);

/// For every other size.
[[nodiscard]] std::string applicationIconSvg();

}  // namespace thermopix
