#pragma once

#include <string>

#include "pixels/Appearance.h"
#include "pixels/PixelBitmap.h"
#include "pixels/StatusImage.h"
#include "sensing/Display.h"

/// Makes the pictures of the status bar and of the settings. Pure functions, any thread.
namespace thermopix::StatusImageRenderer {

/// A template image of the bitmap; a blank 1 × 1 image, no template, for an empty one.
[[nodiscard]] StatusImage image(const PixelBitmap& bitmap, PixelStyle style, PixelSize size);

/// The whole readout with its spoken description.
[[nodiscard]] StatusImage image(const Display& display, const Appearance& appearance);

/// The pet's portrait in square cells; the blank image for `none`.
[[nodiscard]] StatusImage petImage(PixelPet pet, PetMood mood, PixelSize size);

/// The readout in words.
[[nodiscard]] std::string accessibilityDescription(const Display& display, PixelPet pet);

}  // namespace thermopix::StatusImageRenderer
