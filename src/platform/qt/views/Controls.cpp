#include "platform/qt/views/Controls.h"

#include <algorithm>

#include "platform/qt/drawing/Symbols.h"
#include "platform/qt/drawing/TextLines.h"

namespace thermopix::Controls {

namespace {

bool isSeen(const ViewNode& stack) {
    return stack.background != Background{} || !stack.identifier.empty() || stack.accessibility != Accessibility{};
}

}  // namespace

Make* makerOf(const ViewNode& node) {
    switch (node.kind) {
        case ViewKind::stack:
            return isSeen(node) ? makePaintedView : nullptr;
        case ViewKind::text:
        case ViewKind::symbol:
        case ViewKind::pixelImage:
        case ViewKind::divider:
            return makePaintedView;
        case ViewKind::button:
            return node.children.empty() ? makePushButton : makePlainButton;
        case ViewKind::toggle:
            return makeToggleSwitch;
        case ViewKind::picker:
            return node.pickerStyle == PickerStyle::segmented ? makeSegmentedControl : makeLabelledPicker;
        case ViewKind::spacer:
            return nullptr;
        case ViewKind::scroll:
            return makeScrollView;
    }
    return nullptr;
}

Size wantedSize(const ViewNode& leaf, double width) {
    switch (leaf.kind) {
        case ViewKind::text:
            return TextLines::size(leaf.text, leaf.textStyle,
                                   leaf.wraps ? TextLines::Wrapping::asNeeded : TextLines::Wrapping::oneLine, width);
        case ViewKind::symbol: {
            const double side = Symbols::side(leaf.textStyle.points);
            return {side, side};
        }
        case ViewKind::button:
            return pushButtonSize(leaf);
        case ViewKind::toggle:
            return toggleSwitchSize(leaf);
        case ViewKind::picker:
            return leaf.pickerStyle == PickerStyle::segmented ? segmentedControlSize(leaf) : labelledPickerSize(leaf);
        default:
            return {};
    }
}

Size largestTitle(const ViewNode& picker) {
    Size largest;
    for (const auto& item : picker.items) {
        const Size title = TextLines::size(item.title, picker.textStyle);
        largest = {std::max(largest.width, title.width), std::max(largest.height, title.height)};
    }
    return largest;
}

}  // namespace thermopix::Controls
