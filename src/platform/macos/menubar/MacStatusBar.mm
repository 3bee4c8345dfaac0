#include "platform/macos/menubar/MacStatusBar.h"

#include "platform/macos/menubar/MacStatusItem.h"

namespace thermopix {

std::unique_ptr<StatusItem> MacStatusBar::makeStatusItem() {
    return std::make_unique<MacStatusItem>();
}

}  // namespace thermopix
