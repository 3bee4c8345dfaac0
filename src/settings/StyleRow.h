#pragma once

#include "pixels/Appearance.h"
#include "sensing/Display.h"
#include "shell/ViewNode.h"

namespace thermopix {

/// One pixel style as a choice, shown by the readout drawn in it.
struct StyleRow {
    PixelStyle style = PixelStyle::arcade;
    Display display;
    /// Of the readout as it is.
    Appearance appearance;

    [[nodiscard]] ViewNode node() const;
};

}  // namespace thermopix
