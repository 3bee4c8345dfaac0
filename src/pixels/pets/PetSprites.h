#pragma once

#include <optional>

#include "pixels/ArtSheet.h"
#include "pixels/PixelPet.h"

namespace thermopix {

/// A pet's frames: one for each mood, in the order of the moods, then the blink frame; none for `none`.
[[nodiscard]] std::optional<ArtSheet> petSheet(PixelPet pet);

}  // namespace thermopix
