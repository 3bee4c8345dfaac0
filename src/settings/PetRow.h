#pragma once

#include "pixels/PixelPet.h"
#include "pixels/PixelStyle.h"
#include "sensing/Display.h"
#include "shell/ViewNode.h"

namespace thermopix {

/// One pet as a choice, shown by its four moods with the present one highlighted.
struct PetRow {
    PixelPet pet = PixelPet::none;
    Display display;
    PixelStyle style = PixelStyle::arcade;
    PixelSize size = PixelSize::compact;
    bool isSelected = false;
    /// The present mood has its eyes closed just now.
    bool blinking = false;

    [[nodiscard]] ViewNode node() const;
};

}  // namespace thermopix
