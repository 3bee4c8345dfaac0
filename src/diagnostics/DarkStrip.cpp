#include "diagnostics/DarkStrip.h"

#include <cstddef>
#include <vector>

#include "pixels/PixelStyle.h"

namespace thermopix {

namespace {

constexpr std::int64_t margin = 8 * darkStripScale;
constexpr auto stripHeight = static_cast<std::int64_t>(menuBarThickness) * darkStripScale;

/// Calibrated whites 0.07 and 0.94.
constexpr RgbaColor dark{18, 18, 18, 255};
constexpr RgbaColor light{240, 240, 240, 255};

RgbaImage filled(std::int64_t width, std::int64_t height, RgbaColor color) {
    return {width, height, std::vector<RgbaColor>(static_cast<std::size_t>(width * height), color)};
}

}  // namespace

RgbaImage darkStrip(const StatusImage& image) {
    const auto ink = tinted(rasterize(image, darkStripScale), light);
    auto strip = filled(ink.width + 2 * margin, stripHeight, dark);
    drawOver(strip, ink, margin, (stripHeight - ink.height) / 2);
    return strip;
}

}  // namespace thermopix
