#include "platform/macos/settings/NodeControl.h"

#include "platform/macos/drawing/AttributedText.h"
#include "platform/macos/settings/NodeViews.h"
#include "platform/macos/settings/Palette.h"
#include "platform/macos/system/Text.h"

namespace thermopix {

namespace {

// Views are made for the kind of their node, so what `makeNodeView` made is what the casts below find.
template <typename View>
View* as(NSView* view) {
    return static_cast<View*>(view);
}

NSView* makeButton(const ViewNode& node, id target, SEL action) {
    if (node.children.empty()) {
        return [NSButton buttonWithTitle:nsString(node.text) target:target action:action];
    }
    ThermopixRowButton* button = [[ThermopixRowButton alloc] initWithFrame:NSZeroRect];
    button.target = target;
    button.action = action;
    return button;
}

NSView* makePicker(const ViewNode& node, id target, SEL action) {
    if (node.pickerStyle == PickerStyle::segmented) {
        return [NSSegmentedControl segmentedControlWithLabels:@[]
                                                 trackingMode:NSSegmentSwitchTrackingSelectOne
                                                       target:target
                                                       action:action];
    }
    ThermopixMenuPicker* picker = [[ThermopixMenuPicker alloc] initWithFrame:NSZeroRect];
    picker.button.target = target;
    picker.button.action = action;
    return picker;
}

NSView* makeText(const ViewNode& node) {
    NSTextField* label = node.wraps ? [NSTextField wrappingLabelWithString:@""] : [NSTextField labelWithString:@""];
    label.selectable = NO;
    return label;
}

NSFontWeight weightOf(const TextStyle& style) {
    return style.isSemibold ? NSFontWeightSemibold : NSFontWeightRegular;
}

void showText(const ViewNode& node, NSTextField* label) {
    const TextStyle& style = node.textStyle;
    label.attributedStringValue = attributedText(node.text, {.font = [NSFont systemFontOfSize:style.points
                                                                                       weight:weightOf(style)],
                                                             .color = nsColor(node.color),
                                                             .letterSpacing = style.letterSpacing,
                                                             .lineSpacing = style.lineSpacing});
}

void showSymbol(const ViewNode& node, NSImageView* view) {
    NSImageSymbolConfiguration* configuration =
        [NSImageSymbolConfiguration configurationWithPointSize:node.textStyle.points weight:weightOf(node.textStyle)];
    view.image = [[NSImage imageWithSystemSymbolName:nsString(node.text)
                            accessibilityDescription:nil] imageWithSymbolConfiguration:configuration];
    view.contentTintColor = nsColor(node.color);
}

void showSegments(const ViewNode& node, NSSegmentedControl* control) {
    const auto count = static_cast<NSInteger>(node.items.size());
    if (control.segmentCount != count) {
        control.segmentCount = count;
    }
    for (NSInteger i = 0; i < count; ++i) {
        [control setLabel:nsString(node.items[static_cast<std::size_t>(i)].title) forSegment:i];
    }
    const auto selected = selectedItem(node);
    control.selectedSegment = selected ? static_cast<NSInteger>(*selected) : -1;
    control.accessibilityLabel = nsString(node.text);
}

bool hasItems(NSPopUpButton* button, const std::vector<PickerItem>& items) {
    if (button.numberOfItems != static_cast<NSInteger>(items.size())) {
        return false;
    }
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (![[button itemTitleAtIndex:static_cast<NSInteger>(i)] isEqualToString:nsString(items[i].title)]) {
            return false;
        }
    }
    return true;
}

void showMenuPicker(const ViewNode& node, ThermopixMenuPicker* picker) {
    picker.label.stringValue = nsString(node.text);
    picker.label.hidden = node.hidesLabel || node.text.empty() ? YES : NO;
    NSPopUpButton* button = picker.button;
    // An open menu keeps its items.
    if (!hasItems(button, node.items)) {
        [button removeAllItems];
        for (const PickerItem& item : node.items) {
            [button addItemWithTitle:nsString(item.title)];
        }
    }
    const auto selected = selectedItem(node);
    [button selectItemAtIndex:selected ? static_cast<NSInteger>(*selected) : -1];
    button.accessibilityLabel = nsString(node.text);
    button.accessibilityIdentifier = nsString(node.identifier);
}

void showAccessibility(const ViewNode& node, NSView* view) {
    if (!node.identifier.empty()) {
        view.identifier = nsString(node.identifier);
        view.accessibilityIdentifier = nsString(node.identifier);
    }
    const Accessibility& accessibility = node.accessibility;
    if (!accessibility.label.empty()) {
        view.accessibilityLabel = nsString(accessibility.label);
    }
    if (node.kind == ViewKind::button) {
        view.accessibilitySelected = accessibility.isSelected ? YES : NO;
    }
    if (accessibility.hidesChildren) {
        view.accessibilityElement = YES;
        view.accessibilityChildren = @[];
        if (node.kind == ViewKind::stack) {
            view.accessibilityRole = NSAccessibilityGroupRole;
        }
    }
}

}  // namespace

NSView* makeNodeView(const ViewNode& node, id target, SEL action) {
    switch (node.kind) {
        case ViewKind::text:
            return makeText(node);
        case ViewKind::symbol:
            return [[NSImageView alloc] initWithFrame:NSZeroRect];
        case ViewKind::pixelImage:
            return [[ThermopixPixelView alloc] initWithFrame:NSZeroRect];
        case ViewKind::button:
            return makeButton(node, target, action);
        case ViewKind::toggle:
            return [NSButton checkboxWithTitle:nsString(node.text) target:target action:action];
        case ViewKind::picker:
            return makePicker(node, target, action);
        case ViewKind::scroll: {
            NSScrollView* scroll = [[NSScrollView alloc] initWithFrame:NSZeroRect];
            scroll.drawsBackground = NO;
            scroll.hasVerticalScroller = YES;
            scroll.autohidesScrollers = YES;
            // The content keeps clear of the title bar itself.
            scroll.automaticallyAdjustsContentInsets = NO;
            scroll.documentView = [[ThermopixContainerView alloc] initWithFrame:NSZeroRect];
            return scroll;
        }
        case ViewKind::stack:
        case ViewKind::divider:
        case ViewKind::spacer:
            break;
    }
    return [[ThermopixContainerView alloc] initWithFrame:NSZeroRect];
}

void showNode(const ViewNode& node, NSView* view) {
    switch (node.kind) {
        case ViewKind::text:
            showText(node, as<NSTextField>(view));
            break;
        case ViewKind::symbol:
            showSymbol(node, as<NSImageView>(view));
            break;
        case ViewKind::pixelImage:
            [as<ThermopixPixelView>(view) showImage:node.image color:nsColor(node.color)];
            break;
        case ViewKind::button:
            if (node.children.empty()) {
                as<NSButton>(view).title = nsString(node.text);
            } else {
                as<ThermopixRowButton>(view).cornerRadius = node.background.cornerRadius;
            }
            break;
        case ViewKind::toggle:
            as<NSButton>(view).title = nsString(node.text);
            as<NSButton>(view).state = node.isOn ? NSControlStateValueOn : NSControlStateValueOff;
            break;
        case ViewKind::picker:
            if (node.pickerStyle == PickerStyle::segmented) {
                showSegments(node, as<NSSegmentedControl>(view));
            } else {
                showMenuPicker(node, as<ThermopixMenuPicker>(view));
            }
            break;
        case ViewKind::stack:
        case ViewKind::divider:
        case ViewKind::spacer:
        case ViewKind::scroll:
            break;
    }
    showAccessibility(node, view);
}

ControlState controlState(const ViewNode& node, NSView* view) {
    if (node.kind == ViewKind::toggle) {
        return {.isOn = as<NSButton>(view).state == NSControlStateValueOn, .selectedItem = std::nullopt};
    }
    if (node.kind == ViewKind::picker) {
        const NSInteger index = node.pickerStyle == PickerStyle::segmented
                                    ? as<NSSegmentedControl>(view).selectedSegment
                                    : as<ThermopixMenuPicker>(view).button.indexOfSelectedItem;
        if (index >= 0) {
            return {.isOn = false, .selectedItem = static_cast<std::size_t>(index)};
        }
    }
    return {};
}

Size measureNode(const ViewNode& leaf, double width) {
    NSView* view = makeNodeView(leaf, nil, nullptr);
    showNode(leaf, view);
    if (leaf.kind == ViewKind::text && leaf.wraps) {
        as<NSTextField>(view).preferredMaxLayoutWidth = width;
    }
    const NSSize size = view.intrinsicContentSize;
    return {size.width, size.height};
}

}  // namespace thermopix
