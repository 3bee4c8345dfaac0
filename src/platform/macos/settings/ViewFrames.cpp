#include "platform/macos/settings/ViewFrames.h"

namespace thermopix {

Frame frameInParent(const PlacedNode& parent, const PlacedNode& child) {
    if (parent.node->kind == ViewKind::scroll) {
        return child.frame;
    }
    return {child.frame.x - parent.frame.x, child.frame.y - parent.frame.y, child.frame.width, child.frame.height};
}

}  // namespace thermopix
