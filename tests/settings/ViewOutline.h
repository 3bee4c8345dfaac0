#pragma once

#include <string>

#include "shell/ViewNode.h"

namespace thermopix {

/// The tree as indented text, one node a line with everything that differs from a fresh node, for comparing whole panes
/// with files that a person can read.
[[nodiscard]] std::string outline(const ViewNode& node);

}  // namespace thermopix
