#pragma once

#include <string>

#include "pixels/PixelBitmap.h"
#include "pixels/PixelPet.h"
#include "pixels/PixelStyle.h"
#include "pixels/StatusImage.h"
#include "sensing/Display.h"

/// Makes the pictures of the status bar and of the settings. Pure functions, any thread.
namespace thermopix::StatusImageRenderer {

/// A template image of the bitmap; a blank 1 × 1 image, no template, for an empty one.
[[nodiscard]] StatusImage image(const PixelBitmap& bitmap, PixelStyle style, PixelSize size);

/// The whole readout with its spoken description.
[[nodiscard]] StatusImage image(const Display& display, PixelStyle style, PixelSize size, PixelPet pet,
                                bool showsUnitLetter, bool blinking);

/// The pet's portrait in square cells; the blank image for `none`.
[[nodiscard]] StatusImage petImage(PixelPet pet, PetMood mood, PixelSize size);

/// The readout in words.
[[nodiscard]] std::string accessibilityDescription(const Display& display, PixelPet pet);

}  // namespace thermopix::StatusImageRenderer
