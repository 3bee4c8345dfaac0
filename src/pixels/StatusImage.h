#pragma once

#include <optional>
#include <string>

#include "pixels/PixelBitmap.h"

namespace thermopix {

/// A picture as a recipe, free of resolution: every inked cell is a black square or round dot, full or at 12 %
/// opacity, on transparent ground. A template is a mask that its host tints. Sizes are in points.
struct StatusImage {
    PixelBitmap bitmap;
    /// Points per cell.
    double cell = 0;
    /// Points between a cell's edge and its shape.
    double inset = 0;
    bool isRound = false;
    bool isTemplate = false;
    /// What a screen reader says; none for a picture that says nothing.
    std::optional<std::string> description;

    /// Size in points; the blank picture is 1 × 1.
    [[nodiscard]] double width() const;
    [[nodiscard]] double height() const;
    [[nodiscard]] bool isBlank() const { return bitmap.cells().empty(); }

    friend bool operator==(const StatusImage&, const StatusImage&) = default;
};

}  // namespace thermopix
