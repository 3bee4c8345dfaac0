#pragma once

#include "pixels/ArtSheet.h"
#include "pixels/PixelFont.h"

namespace thermopix {

/// The font whose sheet draws the required characters in their order.
[[nodiscard]] PixelFont fontFromSheet(const ArtSheet& sheet);

}  // namespace thermopix
