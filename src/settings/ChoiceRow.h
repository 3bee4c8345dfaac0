#pragma once

#include <string>
#include <string_view>

#include "pixels/Appearance.h"
#include "sensing/Display.h"
#include "shell/ViewNode.h"

namespace thermopix {

/// A row of a list of which one is chosen: a mark, a picture of the choice, its title and what it is like.
struct ChoiceRow {
    std::string identifier;
    ViewNode picture;
    /// As wide as the widest picture of the list, so that the titles line up.
    double pictureWidth = 0;
    std::string_view title;
    std::string_view subtitle;
    bool isSelected = false;

    [[nodiscard]] ViewNode node() const;
};

/// One pet as a choice, shown by its four moods with the present one highlighted.
struct PetRow {
    PixelPet pet = PixelPet::none;
    Display display;
    /// Of the readout as it is.
    Appearance appearance;

    [[nodiscard]] ViewNode node() const;
};

/// One pixel style as a choice, shown by the readout drawn in it.
struct StyleRow {
    PixelStyle style = PixelStyle::arcade;
    Display display;
    /// Of the readout as it is.
    Appearance appearance;

    [[nodiscard]] ViewNode node() const;
};

}  // namespace thermopix
