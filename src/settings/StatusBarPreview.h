#pragma once

#include "pixels/PixelPet.h"
#include "pixels/PixelStyle.h"
#include "sensing/Display.h"
#include "shell/ViewNode.h"

namespace thermopix {

/// A light and a dark menu bar side by side, with the readout at actual size on each.
struct StatusBarPreview {
    Display display;
    PixelStyle style = PixelStyle::arcade;
    PixelSize size = PixelSize::compact;
    PixelPet pet = PixelPet::none;
    bool showsUnitLetter = false;

    [[nodiscard]] ViewNode node() const;
};

}  // namespace thermopix
