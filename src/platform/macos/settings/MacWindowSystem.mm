#include "platform/macos/settings/MacWindowSystem.h"

#import <AppKit/AppKit.h>

#include "platform/macos/settings/MacWindow.h"

namespace thermopix {

std::unique_ptr<Window> MacWindowSystem::makeWindow(const WindowDescription& description) {
    return std::make_unique<MacWindow>(description, mainLoop_);
}

double MacWindowSystem::titleBarHeight() const {
    return [NSWindow frameRectForContentRect:NSZeroRect styleMask:NSWindowStyleMaskTitled].size.height;
}

}  // namespace thermopix
