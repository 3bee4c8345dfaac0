#pragma once

#include <string>
#include <vector>

#include "pixels/PixelBitmap.h"

namespace thermopix {

enum class TerminalColor { allowed, avoided };

/// The bitmap as lines of text for a terminal, two cell rows a line in half blocks, one column a cell. Full ink has
/// the terminal's own colour; ghost ink is dim, or, where colour is avoided, left out. Where full and ghost ink share
/// a column, the ghost is the grey of the terminal's palette. Every line leaves the terminal's attributes reset.
[[nodiscard]] std::vector<std::string> halfBlockLines(const PixelBitmap& bitmap, TerminalColor color);

}  // namespace thermopix
