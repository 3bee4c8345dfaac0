#include "pixels/PixelRasterizer.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <optional>

#include "base/Fatal.h"
#include "base/Unicode.h"
#include "sensing/TemperatureUnit.h"

namespace thermopix::PixelRasterizer {

namespace {

constexpr std::string_view flame = "~";
constexpr std::string_view degreeSign = "°";
constexpr std::string_view blank = " ";

/// The value in decimal, or a dash for each digit that the unit reserves.
std::string digits(const Display& display) {
    return display.value ? fmt::to_string(*display.value)
                         : std::string(static_cast<std::size_t>(digitSlots(display.unit)), '-');
}

}  // namespace

std::string text(const Display& display, bool showsUnitLetter, bool includesFlame) {
    std::string text = fmt::format("{:>{}}", digits(display), digitSlots(display.unit));
    if (display.isHot && includesFlame) {
        text += flame;
    }
    text += degreeSign;
    if (showsUnitLetter) {
        text += suffix(display.unit);
    }
    return text;
}

PixelBitmap bitmap(std::string_view text, const PixelFont& font, std::int64_t tracking) {
    const auto count = static_cast<std::int64_t>(characterCount(text));
    if (count == 0) {
        return {};
    }
    const std::int64_t advance = checkedAdd(font.glyphWidth(), tracking);
    const std::int64_t width = checkedAdd(checkedMultiply(count - 1, advance), font.glyphWidth());
    PixelBitmap line = PixelBitmap::blank(width, font.glyphHeight());
    std::int64_t x = 0;
    forEachCharacter(text, [&](std::string_view character) {
        const PixelGlyph* glyph = font.glyph(character);
        if (glyph == nullptr) {
            glyph = font.glyph(blank);
        }
        if (glyph != nullptr) {
            line.place(*glyph, x, 0);
        }
        x += advance;
    });
    return line;
}

PixelBitmap bitmap(const Display& display, const Appearance& appearance) {
    const auto face = sprite(appearance.pet, display.mood, appearance.blinking);
    PixelBitmap line = bitmap(text(display, appearance.showsUnitLetter, !face.has_value()), font(appearance.style),
                              tracking(appearance.style));
    if (!face) {
        return line;
    }
    const std::int64_t textColumn = face->width() + petGap;
    const std::int64_t height = std::max(line.height(), face->height());
    PixelBitmap readout = PixelBitmap::blank(textColumn + line.width(), height);
    readout.place(*face, 0, (height - face->height()) / 2);
    readout.place(line, textColumn, (height - line.height()) / 2);
    return readout;
}

PixelBitmap digitsBitmap(const Display& display) {
    return bitmap(digits(display), font(PixelStyle::micro), tracking(PixelStyle::micro));
}

}  // namespace thermopix::PixelRasterizer
