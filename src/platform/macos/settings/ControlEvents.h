#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "shell/ViewNode.h"

namespace thermopix {

/// What a control says of itself when the user has operated it.
struct ControlState {
    bool isOn = false;
    /// The chosen value of a picker; none when no item is chosen.
    std::optional<std::size_t> selectedItem;
};

/// The node that a control was made for; null when the tree has none of this name.
[[nodiscard]] const ViewNode* findNode(const ViewNode& root, std::string_view identifier);

/// What the user did, in the words of the node; none where it means nothing.
[[nodiscard]] std::optional<ViewEvent> controlEvent(const ViewNode& node, const ControlState& state);

/// The place of the chosen item; none when no item has the chosen value.
[[nodiscard]] std::optional<std::size_t> selectedItem(const ViewNode& picker);

}  // namespace thermopix
