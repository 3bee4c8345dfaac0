#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/settings/ControlEvents.h"
#include "shell/ViewLayout.h"
#include "shell/ViewNode.h"

NS_ASSUME_NONNULL_BEGIN

namespace thermopix {

/// A view for a node of its kind, of its identifier and, for a button, of its having children. Controls send `action`
/// to `target`.
[[nodiscard]] NSView* makeNodeView(const ViewNode& node, id _Nullable target, SEL _Nullable action);

/// Makes the view show the node, its children apart.
void showNode(const ViewNode& node, NSView* view);

/// How the user left the control.
[[nodiscard]] ControlState controlState(const ViewNode& node, NSView* view);

/// How large a leaf's view wants to be when it may be this wide.
[[nodiscard]] Size measureNode(const ViewNode& leaf, double width);

}  // namespace thermopix

NS_ASSUME_NONNULL_END
