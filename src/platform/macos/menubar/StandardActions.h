#pragma once

#import <AppKit/AppKit.h>

#include "shell/Menu.h"

namespace thermopix {

/// The selector of an action that the platform performs itself, sent to whatever has the focus; null for the
/// program's own.
[[nodiscard]] SEL _Nullable standardAction(MenuAction action);

}  // namespace thermopix
