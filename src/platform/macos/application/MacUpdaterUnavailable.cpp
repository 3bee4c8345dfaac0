#include "platform/macos/application/MacPlatform.h"
#include "system/UnavailableUpdater.h"

namespace thermopix {

std::unique_ptr<UpdaterManaging> MacPlatform::makeUpdater() {
    return std::make_unique<UnavailableUpdater>(log_);
}

}  // namespace thermopix
