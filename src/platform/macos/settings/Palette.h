#pragma once

#import <AppKit/AppKit.h>

#include "shell/ViewNode.h"

NS_ASSUME_NONNULL_BEGIN

namespace thermopix {

/// The system's colour for a purpose, resolved anew in each appearance.
[[nodiscard]] NSColor* nsColor(const RoleColor& color);
[[nodiscard]] NSColor* nsColor(const RgbaColor& color);
[[nodiscard]] NSColor* nsColor(const Color& color);

}  // namespace thermopix

NS_ASSUME_NONNULL_END
