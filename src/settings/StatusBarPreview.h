#pragma once

#include "pixels/Appearance.h"
#include "sensing/Display.h"
#include "shell/ViewNode.h"

namespace thermopix {

/// A light and a dark menu bar side by side, with the readout at actual size on each.
struct StatusBarPreview {
    Display display;
    Appearance appearance;

    [[nodiscard]] ViewNode node() const;
};

}  // namespace thermopix
