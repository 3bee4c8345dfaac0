#pragma once

#include "pixels/Appearance.h"
#include "sensing/Display.h"
#include "shell/ViewNode.h"

namespace thermopix {

/// One pet as a choice, shown by its four moods with the present one highlighted.
struct PetRow {
    PixelPet pet = PixelPet::none;
    Display display;
    /// Of the readout as it is.
    Appearance appearance;

    [[nodiscard]] ViewNode node() const;
};

}  // namespace thermopix
