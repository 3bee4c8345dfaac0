#pragma once

#include <string>
#include <string_view>

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

}  // namespace thermopix
