#pragma once

#include "pixels/PixelPet.h"
#include "pixels/PixelSize.h"
#include "pixels/PixelStyle.h"

namespace thermopix {

/// Everything besides the display that changes the picture of a readout.
struct Appearance {
    PixelStyle style = PixelStyle::arcade;
    PixelSize size = PixelSize::compact;
    PixelPet pet = PixelPet::none;
    bool showsUnitLetter = false;
    bool blinking = false;

    friend bool operator==(const Appearance&, const Appearance&) = default;
};

}  // namespace thermopix
