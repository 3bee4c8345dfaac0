#include "platform/macos/settings/MacViewTree.h"

#include <cstddef>
#include <utility>

#include "platform/macos/settings/BackgroundView.h"
#include "platform/macos/settings/NodeControl.h"
#include "platform/macos/settings/NodeViews.h"
#include "platform/macos/settings/ViewFrames.h"
#include "platform/macos/system/Text.h"

/// Target of every control of a tree.
@interface ThermopixControlTarget : NSObject
@property(nonatomic) std::function<void(NSView*)> handler;
- (void)controlOperated:(NSView*)sender;
@end

@implementation ThermopixControlTarget

- (void)controlOperated:(NSView*)sender {
    _handler(sender);
}

@end

namespace thermopix {

namespace {

NSRect rect(const Frame& frame) {
    return NSMakeRect(frame.x, frame.y, frame.width, frame.height);
}

// Whether a view that was made for `a` can show `b`.
bool isSameView(const ViewNode& a, const ViewNode& b) {
    return a.kind == b.kind && a.identifier == b.identifier && a.children.empty() == b.children.empty() &&
           a.wraps == b.wraps && a.pickerStyle == b.pickerStyle;
}

Background backgroundOf(const ViewNode& node) {
    if (node.kind != ViewKind::divider) {
        return node.background;
    }
    Background line;
    line.fill = std::get<RoleColor>(node.color);
    return line;
}

NSView* contentView(const ViewNode& node, NSView* view) {
    return node.kind == ViewKind::scroll ? static_cast<NSScrollView*>(view).documentView : view;
}

}  // namespace

MacViewTree::MacViewTree(Size size, std::function<void(const ViewEvent&)> onEvent)
    : size_(size),
      onEvent_(std::move(onEvent)),
      container_([[ThermopixContainerView alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)]),
      target_([[ThermopixControlTarget alloc] init]) {
    target_.handler = [this](NSView* control) { operated(control); };
}

MacViewTree::~MacViewTree() {
    [container_ removeFromSuperview];
}

NSView* MacViewTree::view() const {
    return container_;
}

void MacViewTree::show(const ViewNode& root) {
    shown_ = root;
    const auto measure = [this](const ViewNode& leaf, double width) {
        return leafSizes_.size(leaf, width, [](const ViewNode& node, double room) { return measureNode(node, room); });
    };
    const PlacedNode placed = layOut(shown_, size_, measure);
    place(placed, placed.frame, container_, root_);
}

void MacViewTree::showAgain() {
    showElement(root_);
}

void MacViewTree::place(const PlacedNode& placed, const Frame& frame, NSView* parent, Element& element) {
    const ViewNode& node = *placed.node;
    const bool isMade = element.view != nil && isSameView(element.node, node);
    if (isMade && element.node == node && element.frame == frame) {
        return;
    }
    if (!isMade) {
        NSView* made = makeNodeView(node, target_, @selector(controlOperated:));
        [element.view removeFromSuperview];
        [parent addSubview:made];
        element = {};
        element.view = made;
    }
    NSView* view = element.view;
    showBackground(node, element);
    showNode(node, view);
    view.frame = [view frameForAlignmentRect:rect(frame)];
    element.node = node;
    element.frame = frame;
    placeChildren(placed, element);
}

void MacViewTree::placeChildren(const PlacedNode& placed, Element& element) {
    NSView* content = contentView(*placed.node, element.view);
    for (std::size_t i = placed.children.size(); i < element.children.size(); ++i) {
        [element.children[i].view removeFromSuperview];
    }
    element.children.resize(placed.children.size());
    for (std::size_t i = 0; i < placed.children.size(); ++i) {
        const PlacedNode& child = placed.children[i];
        const Frame frame = frameInParent(placed, child);
        if (placed.node->kind == ViewKind::scroll) {
            content.frame = NSMakeRect(0, 0, frame.width, frame.height);
        }
        place(child, frame, content, element.children[i]);
    }
}

void MacViewTree::showBackground(const ViewNode& node, Element& element) {
    const Background background = backgroundOf(node);
    if (!isVisible(background)) {
        [element.background removeFromSuperview];
        element.background = nil;
        return;
    }
    if (element.background == nil) {
        ThermopixBackgroundView* view = [[ThermopixBackgroundView alloc] initWithFrame:element.view.bounds];
        [element.view addSubview:view positioned:NSWindowBelow relativeTo:nil];
        element.background = view;
    }
    [element.background showBackground:background];
}

void MacViewTree::showElement(const Element& element) {
    NSView* view = element.view;
    if (view != nil) {
        showNode(element.node, view);
    }
    for (const Element& child : element.children) {
        showElement(child);
    }
}

void MacViewTree::operated(NSView* control) {
    // A pop-up button stands in a view with its title, and that has the node's name.
    NSView* named = control.identifier != nil ? control : control.superview;
    const ViewNode* node = findNode(shown_, utf8(named.identifier));
    if (node == nullptr) {
        return;
    }
    if (const auto event = controlEvent(*node, controlState(*node, named))) {
        onEvent_(*event);
    }
}

}  // namespace thermopix
