#pragma once

#include <cstdint>
#include <vector>

#include "pixels/StatusImage.h"

namespace thermopix {

struct RgbaColor {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;

    friend bool operator==(const RgbaColor&, const RgbaColor&) = default;
};

/// Pixels with straight (not premultiplied) alpha, row-major from the top left.
struct RgbaImage {
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::vector<RgbaColor> pixels;

    [[nodiscard]] const RgbaColor& at(std::int64_t x, std::int64_t y) const;

    friend bool operator==(const RgbaImage&, const RgbaImage&) = default;
};

/// A round dot lies in the centre of its cell. With `onPoints`, a dot less than two points wide whose centre is a
/// corner of four points lies in the centre of the first: small dots are then points of light and no grey haze, at one
/// pixel per point and in a larger picture that is scaled down to that.
enum class DotPlacement { centred, onPoints };

/// Draws the recipe at a whole number of pixels per point, black on transparent. Squares have hard edges; each pixel
/// of a round dot is covered by exactly the dot's share of its area.
[[nodiscard]] RgbaImage rasterize(const StatusImage& image, std::int64_t scale,
                                  DotPlacement placement = DotPlacement::centred);

/// Composites `top` over `ground` (source-over) with its left top pixel at (x, y), clipped to the ground.
void drawOver(RgbaImage& ground, const RgbaImage& top, std::int64_t x, std::int64_t y);

/// The image as a mask: every pixel gets the colour and keeps its coverage (source-atop).
[[nodiscard]] RgbaImage tinted(RgbaImage image, RgbaColor color);

}  // namespace thermopix
