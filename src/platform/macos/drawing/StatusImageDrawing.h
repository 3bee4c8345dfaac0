#pragma once

#include "base/FunctionView.h"
#include "pixels/StatusImage.h"
#include "shell/ViewLayout.h"

namespace thermopix {

/// Fills a square, or the circle in it, in points with their origin at the top left. Opacity is that of the ink, 0
/// to 1.
using FillCell = FunctionView<void(const Frame& cell, double opacity)>;

/// Fills every inked cell, row by row from the top left; nothing for the blank picture.
void fillCells(const StatusImage& image, FillCell fill);

}  // namespace thermopix
