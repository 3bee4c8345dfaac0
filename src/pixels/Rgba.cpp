#include "pixels/Rgba.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/Fatal.h"
#include "pixels/CellGrid.h"
#include "pixels/DiscArea.h"

namespace thermopix {

namespace {

constexpr std::uint32_t opaque = 255;

RgbaImage transparentImage(std::int64_t width, std::int64_t height) {
    return {width, height, std::vector<RgbaColor>(CellGrid::cellCount(width, height), RgbaColor{0, 0, 0, 0})};
}

void requirePixels(const RgbaImage& image) {
    require(image.pixels.size() == CellGrid::cellCount(image.width, image.height),
            "an image needs width × height pixels");
}

/// How far the centre of a dot lies from the centre of its cell, to the left and up; in points.
double dotOffset(const StatusImage& image, DotPlacement placement) {
    const bool isOnCorner = std::fmod(image.cell, 2) == 0;
    const bool isSmall = image.cell / 2 - image.inset < 1;
    return placement == DotPlacement::onPoints && image.isRound && isOnCorner && isSmall ? 0.5 : 0;
}

/// How much of each pixel of a cell its shape covers, 0 to 1; every inked cell looks the same.
std::vector<double> cellCoverage(const StatusImage& image, std::int64_t pixels, double scale, DotPlacement placement) {
    const double inset = image.inset * scale;
    const double middle = static_cast<double>(pixels) / 2;
    const double radius = middle - inset;
    require(inset >= 0 && radius > 0, "a dot must fit its cell");
    const double centre = middle - dotOffset(image, placement) * scale;

    std::vector<double> coverage;
    coverage.reserve(CellGrid::cellCount(pixels, pixels));
    for (std::int64_t row = 0; row < pixels; ++row) {
        for (std::int64_t column = 0; column < pixels; ++column) {
            const double left = static_cast<double>(column) - centre;
            const double top = static_cast<double>(row) - centre;
            if (image.isRound) {
                coverage.push_back(std::clamp(discArea(radius, left, top, left + 1, top + 1), 0.0, 1.0));
            } else {
                // Without antialiasing a pixel belongs to the square that holds its centre.
                const bool isInside = std::max(std::abs(left + 0.5), std::abs(top + 0.5)) < radius;
                coverage.push_back(isInside ? 1.0 : 0.0);
            }
        }
    }
    return coverage;
}

/// The alpha of each pixel of an inked cell.
using Stamp = std::vector<std::uint8_t>;

Stamp stamp(const std::vector<double>& coverage, Ink ink) {
    Stamp alphas;
    alphas.reserve(coverage.size());
    for (const double covered : coverage) {
        alphas.push_back(static_cast<std::uint8_t>(std::lround(alpha(ink) * covered * opaque)));
    }
    return alphas;
}

void press(const Stamp& stamp, RgbaImage& raster, std::int64_t left, std::int64_t top, std::int64_t side) {
    auto pressed = stamp.begin();
    for (std::int64_t y = top; y < top + side; ++y) {
        auto pixel = raster.pixels.begin() + y * raster.width + left;
        for (std::int64_t x = 0; x < side; ++x) {
            (pixel++)->alpha = *pressed++;
        }
    }
}

RgbaColor over(RgbaColor ground, RgbaColor top) {
    const std::uint32_t topWeight = top.alpha * opaque;
    const std::uint32_t groundWeight = ground.alpha * (opaque - top.alpha);
    const std::uint32_t weight = topWeight + groundWeight;
    if (weight == 0) {
        return {0, 0, 0, 0};
    }
    const auto blend = [&](std::uint8_t groundChannel, std::uint8_t topChannel) {
        return static_cast<std::uint8_t>((topChannel * topWeight + groundChannel * groundWeight + weight / 2) / weight);
    };
    return {blend(ground.red, top.red), blend(ground.green, top.green), blend(ground.blue, top.blue),
            static_cast<std::uint8_t>((weight + opaque / 2) / opaque)};
}

}  // namespace

const RgbaColor& RgbaImage::at(std::int64_t x, std::int64_t y) const {
    requirePixels(*this);
    return pixels[CellGrid::index(x, y, width, height)];
}

RgbaImage rasterize(const StatusImage& image, std::int64_t scale, DotPlacement placement) {
    require(scale >= 1, "an image is drawn at one pixel per point or more");
    if (image.isBlank()) {
        return transparentImage(scale, scale);
    }
    const double pixelsPerCell = image.cell * static_cast<double>(scale);
    require(pixelsPerCell >= 1 && pixelsPerCell <= 4096 && pixelsPerCell == std::floor(pixelsPerCell),
            "a cell is a whole number of pixels");
    const auto pixels = static_cast<std::int64_t>(pixelsPerCell);
    const std::vector<double> coverage = cellCoverage(image, pixels, static_cast<double>(scale), placement);
    const Stamp full = stamp(coverage, Ink::full);
    const Stamp ghost = stamp(coverage, Ink::ghost);

    RgbaImage raster =
        transparentImage(checkedMultiply(image.bitmap.width(), pixels), checkedMultiply(image.bitmap.height(), pixels));
    for (std::int64_t y = 0; y < image.bitmap.height(); ++y) {
        for (std::int64_t x = 0; x < image.bitmap.width(); ++x) {
            if (const Ink ink = image.bitmap.at(x, y); ink != Ink::none) {
                press(ink == Ink::full ? full : ghost, raster, x * pixels, y * pixels, pixels);
            }
        }
    }
    return raster;
}

void drawOver(RgbaImage& ground, const RgbaImage& top, std::int64_t x, std::int64_t y) {
    requirePixels(ground);
    requirePixels(top);
    const std::int64_t left = std::max<std::int64_t>(x, 0);
    const std::int64_t right = std::min(checkedAdd(x, top.width), ground.width);
    const std::int64_t bottom = std::min(checkedAdd(y, top.height), ground.height);
    for (std::int64_t row = std::max<std::int64_t>(y, 0); row < bottom; ++row) {
        for (std::int64_t column = left; column < right; ++column) {
            RgbaColor& pixel = ground.pixels[static_cast<std::size_t>(row * ground.width + column)];
            pixel = over(pixel, top.pixels[static_cast<std::size_t>((row - y) * top.width + column - x)]);
        }
    }
}

RgbaImage tinted(RgbaImage image, RgbaColor color) {
    requirePixels(image);
    const auto blend = [&color](std::uint8_t channel, std::uint8_t tint) {
        return static_cast<std::uint8_t>((tint * color.alpha + channel * (opaque - color.alpha) + opaque / 2) / opaque);
    };
    for (RgbaColor& pixel : image.pixels) {
        pixel = {blend(pixel.red, color.red), blend(pixel.green, color.green), blend(pixel.blue, color.blue),
                 pixel.alpha};
    }
    return image;
}

}  // namespace thermopix
