#include "pixels/ApplicationIcon.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/Fatal.h"
#include "pixels/PixelPet.h"

namespace thermopix {

namespace {

constexpr std::int64_t smallestSide = 16;
/// The tile is this many cells wide, give or take a part of a cell.
constexpr std::int64_t columns = 11;
constexpr double marginShare = 0.042;
constexpr double cornerShare = 0.23;
/// Cells without ink shimmer through where they are large enough to be seen as cells.
constexpr std::int64_t smallestShimmeringCell = 4;
constexpr double shimmer = 0.045;

constexpr RgbaColor tileTop{62, 60, 72, 255};
constexpr RgbaColor tileBottom{25, 24, 31, 255};
constexpr RgbaColor catTop{255, 206, 92, 255};
constexpr RgbaColor catBottom{255, 94, 58, 255};

std::uint8_t mixed(std::uint8_t from, std::uint8_t to, double share) {
    return static_cast<std::uint8_t>(std::lround(from + (to - from) * share));
}

RgbaColor mixed(RgbaColor from, RgbaColor to, double share) {
    return {mixed(from.red, to.red, share), mixed(from.green, to.green, share), mixed(from.blue, to.blue, share),
            mixed(from.alpha, to.alpha, share)};
}

PixelGlyph cat() {
    const auto found = sprite(PixelPet::cat, PetMood::content, false);
    require(found.has_value(), "the cat has a face");
    return *found;
}

RgbaColor catColor(std::int64_t row, std::int64_t rows) {
    return mixed(catTop, catBottom, static_cast<double>(row) / static_cast<double>(rows - 1));
}

/// Where tile and cat lie in an icon of this side, in pixels.
struct Geometry {
    std::int64_t margin = 0;
    std::int64_t tile = 0;
    double radius = 0;
    std::int64_t cell = 0;
    std::int64_t catLeft = 0;
    std::int64_t catTop = 0;
};

Geometry geometry(std::int64_t side, const PixelGlyph& face) {
    Geometry result;
    result.margin = std::lround(static_cast<double>(side) * marginShare);
    result.tile = side - 2 * result.margin;
    result.radius = static_cast<double>(result.tile) * cornerShare;
    result.cell = (2 * result.tile + columns) / (2 * columns);
    result.catLeft = (side - face.width() * result.cell) / 2;
    result.catTop = (side - face.height() * result.cell) / 2;
    return result;
}

bool isInsideTile(double x, double y, const Geometry& at) {
    const auto side = static_cast<double>(at.tile);
    const double left = x - static_cast<double>(at.margin);
    const double top = y - static_cast<double>(at.margin);
    if (left < 0 || top < 0 || left > side || top > side) {
        return false;
    }
    const double fromX = left - std::clamp(left, at.radius, side - at.radius);
    const double fromY = top - std::clamp(top, at.radius, side - at.radius);
    return fromX * fromX + fromY * fromY <= at.radius * at.radius;
}

/// How much of the pixel the tile covers, in sixty-fourths.
double tileCoverage(std::int64_t column, std::int64_t row, const Geometry& at) {
    const auto x = static_cast<double>(column);
    const auto y = static_cast<double>(row);
    // The tile has no hollows: a pixel whose corners lie inside lies inside.
    if (isInsideTile(x, y, at) && isInsideTile(x + 1, y, at) && isInsideTile(x, y + 1, at) &&
        isInsideTile(x + 1, y + 1, at)) {
        return 1;
    }
    constexpr int samples = 8;
    int inside = 0;
    for (int down = 0; down < samples; ++down) {
        for (int across = 0; across < samples; ++across) {
            inside += isInsideTile(x + (across + 0.5) / samples, y + (down + 0.5) / samples, at) ? 1 : 0;
        }
    }
    return inside / static_cast<double>(samples * samples);
}

bool isShimmering(std::int64_t x, std::int64_t y, const Geometry& at) {
    if (at.cell < smallestShimmeringCell) {
        return false;
    }
    // Cells continue the cat's grid; the line between two of them stays dark.
    const auto within = [&at](std::int64_t position, std::int64_t origin) {
        const std::int64_t offset = (position - origin) % at.cell;
        return offset < 0 ? offset + at.cell : offset;
    };
    const std::int64_t gap = std::max<std::int64_t>(1, at.cell / 10);
    return within(x, at.catLeft) < at.cell - gap && within(y, at.catTop) < at.cell - gap;
}

std::string hex(RgbaColor color) {
    return fmt::format("#{:02x}{:02x}{:02x}", color.red, color.green, color.blue);
}

}  // namespace

RgbaImage applicationIcon(std::int64_t side) {
    require(side >= smallestSide, "an icon has at least 16 × 16 pixels");
    const PixelGlyph face = cat();
    const Geometry at = geometry(side, face);
    RgbaImage icon{side, side, {}};
    icon.pixels.reserve(static_cast<std::size_t>(side * side));
    for (std::int64_t y = 0; y < side; ++y) {
        const double down = static_cast<double>(y) / static_cast<double>(side - 1);
        for (std::int64_t x = 0; x < side; ++x) {
            RgbaColor pixel = mixed(tileTop, tileBottom, down);
            const bool isBeside = x < at.catLeft || y < at.catTop;
            const std::int64_t column = (x - at.catLeft) / at.cell;
            const std::int64_t row = (y - at.catTop) / at.cell;
            if (!isBeside && column < face.width() && row < face.height() && face.at(column, row) != Ink::none) {
                pixel = catColor(row, face.height());
            } else if (isShimmering(x, y, at)) {
                pixel = mixed(pixel, {255, 255, 255, 255}, shimmer);
            }
            pixel.alpha = static_cast<std::uint8_t>(std::lround(255 * tileCoverage(x, y, at)));
            icon.pixels.push_back(pixel);
        }
    }
    return icon;
}

std::string applicationIconSvg() {
    constexpr std::int64_t side = 128;
    const PixelGlyph face = cat();
    const Geometry at = geometry(side, face);
    std::string svg = fmt::format(
        R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="{0}" height="{0}" viewBox="0 0 {0} {0}">
  <defs>
    <linearGradient id="tile" x1="0" y1="0" x2="0" y2="1">
      <stop offset="0" stop-color="{1}"/><stop offset="1" stop-color="{2}"/>
    </linearGradient>
  </defs>
  <rect x="{3}" y="{3}" width="{4}" height="{4}" rx="{5:.2f}" fill="url(#tile)"/>
)svg",
        side, hex(tileTop), hex(tileBottom), at.margin, at.tile, at.radius);
    for (std::int64_t row = 0; row < face.height(); ++row) {
        std::string path;
        for (std::int64_t column = 0; column < face.width(); ++column) {
            if (face.at(column, row) != Ink::none) {
                path += fmt::format("M{} {}h{}v{}h-{}z", at.catLeft + column * at.cell, at.catTop + row * at.cell,
                                    at.cell, at.cell, at.cell);
            }
        }
        svg += fmt::format("  <path fill=\"{}\" shape-rendering=\"crispEdges\" d=\"{}\"/>\n",
                           hex(catColor(row, face.height())), path);
    }
    return svg + "</svg>\n";
}

}  // namespace thermopix
