#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/settings/NodeViews.h"
#include "shell/ViewNode.h"

NS_ASSUME_NONNULL_BEGIN

namespace thermopix {

/// Whether there is anything to see of it, at rest or under the pointer.
[[nodiscard]] bool isVisible(const Background& background);

}  // namespace thermopix

/// Fills the view that it lies in with a node's background, behind everything else.
@interface ThermopixBackgroundView : ThermopixContainerView

- (void)showBackground:(const thermopix::Background&)background;

@end

NS_ASSUME_NONNULL_END
