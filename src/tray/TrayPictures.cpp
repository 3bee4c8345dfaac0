#include "tray/TrayPictures.h"

#include <algorithm>
#include <cmath>

namespace thermopix {
namespace {

constexpr std::int32_t doubledFrom = 32;

/// Fewer digits keep the size of two.
constexpr std::int64_t narrowestDigits = 7;

constexpr std::size_t bytesPerPixel = 4;

/// The largest whole number of pixels a cell at which the art fits; a wide readout is not drawn larger than the user
/// wants it.
std::int64_t fittingCell(const StatusImage& art, TrayShape shape, std::int64_t size) {
    const std::int64_t rows = std::max<std::int64_t>(art.bitmap.height(), 1);
    const std::int64_t limit =
        shape == TrayShape::wide ? std::llround(art.cell) : size / std::max(art.bitmap.width(), narrowestDigits);
    return std::max<std::int64_t>(std::min(limit, size / rows), 1);
}

/// One inked cell at so many pixels a point; all cells are stamped from its alpha.
RgbaImage stamp(const StatusImage& art, std::int64_t cell, std::int64_t scale) {
    StatusImage dot;
    dot.bitmap = PixelBitmap(1, 1, {Ink::full});
    dot.cell = static_cast<double>(cell);
    dot.inset = art.cell > 0 ? art.inset / art.cell * dot.cell : 0;
    dot.isRound = art.isRound;
    return rasterize(dot, scale, DotPlacement::onPoints);
}

void paint(TrayPicture& picture, const RgbaImage& shape, std::int64_t left, std::int64_t top, RgbaColor color) {
    for (std::int64_t y = 0; y < shape.height; ++y) {
        for (std::int64_t x = 0; x < shape.width; ++x) {
            const std::int64_t column = left + x;
            const std::int64_t row = top + y;
            const std::uint8_t coverage = shape.at(x, y).alpha;
            if (coverage == 0 || column < 0 || row < 0 || column >= picture.width || row >= picture.height) {
                continue;
            }
            auto* pixel = &picture.argb[static_cast<std::size_t>(row * picture.width + column) * bytesPerPixel];
            pixel[0] = coverage;
            pixel[1] = color.red;
            pixel[2] = color.green;
            pixel[3] = color.blue;
        }
    }
}

TrayPicture picture(const StatusImage& art, TrayShape shape, std::int32_t size, const TrayInk& ink) {
    const std::int64_t scale = size >= doubledFrom ? 2 : 1;
    const std::int64_t side = size / scale;
    const std::int64_t cell = fittingCell(art, shape, side);
    const std::int64_t artWidth = art.bitmap.width() * cell;
    const std::int64_t width = shape == TrayShape::wide ? std::max<std::int64_t>(artWidth, 1) : side;
    const std::int64_t left = (width - artWidth) / 2;
    const std::int64_t top = (side - art.bitmap.height() * cell) / 2;

    TrayPicture result;
    result.width = static_cast<std::int32_t>(width * scale);
    result.height = size;
    result.argb.assign(static_cast<std::size_t>(result.width) * static_cast<std::size_t>(size) * bytesPerPixel, 0);

    const RgbaImage shapeOfCell = stamp(art, cell, scale);
    for (std::int64_t y = 0; y < art.bitmap.height(); ++y) {
        for (std::int64_t x = 0; x < art.bitmap.width(); ++x) {
            const Ink inkOfCell = art.bitmap.at(x, y);
            const auto color = inkOfCell == Ink::full ? std::optional(ink.full) : ink.ghost;
            if (inkOfCell != Ink::none && color) {
                paint(result, shapeOfCell, (left + x * cell) * scale, (top + y * cell) * scale, *color);
            }
        }
    }
    return result;
}

}  // namespace

StatusImage trayArt(const StatusItemImage& image, TrayShape shape) {
    StatusImage art;
    if (shape == TrayShape::square) {
        art.bitmap = image.digits;
        art.cell = 1;
        return art;
    }
    art = image.readout;
    art.description.reset();
    return art;
}

std::vector<TrayPicture> trayPictures(const StatusImage& art, TrayPictureSet set, const TrayInk& ink) {
    std::vector<TrayPicture> pictures;
    for (const std::int32_t size : pictureSizes(set)) {
        pictures.push_back(picture(art, shape(set), size, ink));
    }
    return pictures;
}

}  // namespace thermopix
