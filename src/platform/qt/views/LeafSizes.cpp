#include "platform/qt/views/LeafSizes.h"

#include "platform/qt/drawing/Symbols.h"
#include "platform/qt/drawing/TextLines.h"
#include "platform/qt/views/PopupPicker.h"
#include "platform/qt/views/PushButton.h"
#include "platform/qt/views/SegmentedControl.h"
#include "platform/qt/views/ToggleSwitch.h"

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
            return PushButton::wantedSize(leaf);
        case ViewKind::toggle:
            return ToggleSwitch::wantedSize(leaf);
        case ViewKind::picker:
            return leaf.pickerStyle == PickerStyle::segmented ? SegmentedControl::wantedSize(leaf)
                                                              : LabelledPicker::wantedSize(leaf);
        default:
            return {};
    }
}

}  // namespace thermopix::LeafSizes
