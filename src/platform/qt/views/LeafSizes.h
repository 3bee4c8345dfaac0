#pragma once

#include "shell/ViewLayout.h"
#include "shell/ViewNode.h"

namespace thermopix::LeafSizes {

/// How large the leaf wants to be, in this shell's fonts and controls.
[[nodiscard]] Size wanted(const ViewNode& leaf, double width);

/// The same, as the layout takes it.
inline constexpr auto measure = [](const ViewNode& leaf, double width) { return wanted(leaf, width); };

}  // namespace thermopix::LeafSizes
