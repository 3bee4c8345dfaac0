#pragma once

#import <AppKit/AppKit.h>

#include "pixels/StatusImage.h"

NS_ASSUME_NONNULL_BEGIN

namespace thermopix {

/// Draws the picture in one colour into the current context, which is flipped; without a context nothing happens.
void drawInCurrentContext(const StatusImage& image, NSColor* color);

/// The picture as an image that is drawn anew at every scale.
[[nodiscard]] NSImage* nsImage(const StatusImage& picture);

}  // namespace thermopix

NS_ASSUME_NONNULL_END
