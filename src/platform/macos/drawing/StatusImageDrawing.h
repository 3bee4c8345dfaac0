#pragma once

#include "pixels/StatusImage.h"
#include "shell/ViewLayout.h"

namespace thermopix {

/// What drawing a picture asks of a graphics context; points, origin top left.
class StatusImageCanvas {
public:
    virtual ~StatusImageCanvas() = default;
    virtual void setAntialiasing(bool antialiases) = 0;
    /// Opacity is that of the ink, 0 to 1.
    virtual void fillRectangle(const Frame& frame, double opacity) = 0;
    virtual void fillOval(const Frame& frame, double opacity) = 0;
};

/// Draws every inked cell, row by row from the top left; nothing for the blank picture.
void drawStatusImage(const StatusImage& image, StatusImageCanvas& canvas);

}  // namespace thermopix
