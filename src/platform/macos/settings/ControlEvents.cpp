#include "platform/macos/settings/ControlEvents.h"

namespace thermopix {

const ViewNode* findNode(const ViewNode& root, std::string_view identifier) {
    if (identifier.empty()) {
        return nullptr;
    }
    if (root.identifier == identifier) {
        return &root;
    }
    for (const ViewNode& child : root.children) {
        if (const ViewNode* found = findNode(child, identifier)) {
            return found;
        }
    }
    return nullptr;
}

std::optional<ViewEvent> controlEvent(const ViewNode& node, const ControlState& state) {
    switch (node.kind) {
        case ViewKind::button:
            return ViewEvent{node.identifier, {}};
        case ViewKind::toggle:
            return ViewEvent{node.identifier, state.isOn ? "true" : "false"};
        case ViewKind::picker:
            if (state.selectedItem && *state.selectedItem < node.items.size()) {
                return ViewEvent{node.identifier, node.items[*state.selectedItem].value};
            }
            break;
        default:
            break;
    }
    return std::nullopt;
}

std::optional<std::size_t> selectedItem(const ViewNode& picker) {
    for (std::size_t i = 0; i < picker.items.size(); ++i) {
        if (picker.items[i].value == picker.selection) {
            return i;
        }
    }
    return std::nullopt;
}

}  // namespace thermopix
