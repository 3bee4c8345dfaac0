#pragma once

#include "pixels/PixelPet.h"
#include "pixels/PixelStyle.h"
#include "sensing/Display.h"
#include "shell/ViewNode.h"

namespace thermopix {

/// One pixel style as a choice, shown by the readout drawn in it.
struct StyleRow {
    PixelStyle style = PixelStyle::arcade;
    Display display;
    PixelSize size = PixelSize::compact;
    PixelPet pet = PixelPet::none;
    bool showsUnitLetter = false;
    bool isSelected = false;

    [[nodiscard]] ViewNode node() const;
};

}  // namespace thermopix
