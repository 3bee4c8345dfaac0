#pragma once

#include "shell/ViewLayout.h"

namespace thermopix {

/// A placed child's frame within its parent, both with their origin at the top left. What a scroll holds is placed
/// in its content already.
[[nodiscard]] Frame frameInParent(const PlacedNode& parent, const PlacedNode& child);

}  // namespace thermopix
