#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <vector>

#include "platform/macos/settings/LeafSizes.h"
#include "shell/ViewLayout.h"
#include "shell/ViewNode.h"

@class ThermopixBackgroundView;
@class ThermopixContainerView;
@class ThermopixControlTarget;

NS_ASSUME_NONNULL_BEGIN

namespace thermopix {

/// A tree of view nodes as AppKit views at fixed frames. What is there already is brought up to date in place, so
/// that the pointer, the focus and an open menu stay with their control. Main thread.
class MacViewTree {
public:
    /// `onEvent` is told what the user does with a control.
    MacViewTree(Size size, std::function<void(const ViewEvent&)> onEvent);
    ~MacViewTree();
    MacViewTree(const MacViewTree&) = delete;
    MacViewTree& operator=(const MacViewTree&) = delete;

    /// The view that holds the tree.
    [[nodiscard]] NSView* view() const;

    void show(const ViewNode& root);

    /// Makes every control say again what its node says, whatever the user did to it.
    void showAgain();

private:
    /// A node's view, the background in it and what stands for its children.
    struct Element {
        ViewNode node;
        Frame frame;
        NSView* _Nullable view = nil;
        ThermopixBackgroundView* _Nullable background = nil;
        std::vector<Element> children;
    };

    void place(const PlacedNode& placed, const Frame& frame, NSView* parent, Element& element);
    void placeChildren(const PlacedNode& placed, Element& element);
    static void showBackground(const ViewNode& node, Element& element);
    static void showElement(const Element& element);
    void operated(NSView* control);

    Size size_;
    std::function<void(const ViewEvent&)> onEvent_;
    LeafSizes leafSizes_;
    ViewNode shown_;
    ThermopixContainerView* container_;
    ThermopixControlTarget* target_;
    Element root_;
};

}  // namespace thermopix

NS_ASSUME_NONNULL_END
