#include "pixels/PixelStyle.h"

#include <algorithm>

namespace thermopix {

namespace {

constexpr auto displayOrder = allCases<PixelStyle>();

}  // namespace

std::span<const PixelStyle> pixelStyleDisplayOrder() {
    return displayOrder;
}

double renderedHeight(PixelStyle style, PixelSize size, PixelPet pet) {
    const std::int64_t textHeight = font(style).glyphHeight();
    const std::int64_t rows = pet == PixelPet::none ? textHeight : std::max(textHeight, petHeight);
    return cell(size) * static_cast<double>(rows);
}

}  // namespace thermopix
