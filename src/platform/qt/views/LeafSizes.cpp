#include "platform/qt/views/LeafSizes.h"

#include "platform/qt/drawing/Symbols.h"
#include "platform/qt/drawing/TextLines.h"
#include "platform/qt/views/Controls.h"

namespace thermopix::LeafSizes {

Size wanted(const ViewNode& leaf, double width) {
    switch (leaf.kind) {
        case ViewKind::text:
            return TextLines::size(leaf.text, leaf.textStyle,
                                   leaf.wraps ? TextLines::Wrapping::asNeeded : TextLines::Wrapping::oneLine, width);
        case ViewKind::symbol: {
            const double side = Symbols::side(leaf.textStyle.points);
            return {side, side};
        }
        case ViewKind::button:
            return Controls::pushButtonSize(leaf);
        case ViewKind::toggle:
            return Controls::toggleSwitchSize(leaf);
        case ViewKind::picker:
            return leaf.pickerStyle == PickerStyle::segmented ? Controls::segmentedControlSize(leaf)
                                                              : Controls::labelledPickerSize(leaf);
        default:
            return {};
    }
}

}  // namespace thermopix::LeafSizes
