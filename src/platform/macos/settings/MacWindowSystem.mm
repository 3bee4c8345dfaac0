#include "platform/macos/settings/MacWindowSystem.h"

#include "platform/macos/settings/MacWindow.h"

namespace thermopix {

std::unique_ptr<Window> MacWindowSystem::makeWindow(const WindowDescription& description) {
    return std::make_unique<MacWindow>(description, mainLoop_);
}

}  // namespace thermopix
