#include "pixels/StatusImageRenderer.h"

#include <fmt/format.h>

#include "pixels/PixelRasterizer.h"

namespace thermopix::StatusImageRenderer {

StatusImage image(const PixelBitmap& bitmap, PixelStyle style, PixelSize size) {
    if (bitmap.cells().empty()) {
        return {};
    }
    return {.bitmap = bitmap,
            .cell = cell(size),
            .inset = dotInset(style, size),
            .isRound = isRound(style),
            .isTemplate = true,
            .description = {}};
}

StatusImage image(const Display& display, const Appearance& appearance) {
    StatusImage readout = image(PixelRasterizer::bitmap(display, appearance), appearance.style, appearance.size);
    readout.description = accessibilityDescription(display, appearance.pet);
    return readout;
}

StatusImage petImage(PixelPet pet, PetMood mood, PixelSize size) {
    const auto face = sprite(pet, mood, false);
    if (!face) {
        return {};
    }
    StatusImage portrait = image(PixelBitmap(face->width(), face->height(), face->cells()), PixelStyle::arcade, size);
    portrait.description = fmt::format("{}, {}", title(pet), row(mood).lowercaseTitle);
    return portrait;
}

std::string accessibilityDescription(const Display& display, PixelPet pet) {
    if (!display.value) {
        return fmt::format("Temperature unavailable. Thermal state {}.", row(display.pressure).lowercaseTitle);
    }
    std::string description = fmt::format("{} degrees {}", *display.value, title(display.unit));
    if (pet != PixelPet::none) {
        description += fmt::format(", {}", row(display.mood).lowercaseTitle);
    } else if (display.isHot) {
        description += ", running hot";
    }
    return description;
}

}  // namespace thermopix::StatusImageRenderer
