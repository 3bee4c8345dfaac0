#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "pixels/Appearance.h"
#include "pixels/PixelBitmap.h"
#include "pixels/PixelFont.h"
#include "sensing/Display.h"

/// Composes the readout in whole cells. Pure functions, any thread.
namespace thermopix::PixelRasterizer {

/// Empty columns between the pet and the text.
inline constexpr std::int64_t petGap = 2;

/// The characters to draw: the digit field, a flame when hot and wanted, the degree sign, the unit letter.
[[nodiscard]] std::string text(const Display& display, bool showsUnitLetter, bool includesFlame);

/// One line of glyphs; a character that the font lacks leaves a blank slot.
[[nodiscard]] PixelBitmap bitmap(std::string_view text, const PixelFont& font, std::int64_t tracking);

/// The whole readout: the pet, if any, on the left, the text beside it; without a pet a hot display has a flame.
[[nodiscard]] PixelBitmap bitmap(const Display& display, const Appearance& appearance);

/// The digits alone in the micro font, without padding, for places that leave room for a square only.
[[nodiscard]] PixelBitmap digitsBitmap(const Display& display);

}  // namespace thermopix::PixelRasterizer
