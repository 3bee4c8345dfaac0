#include "system/UnavailableUpdater.h"

namespace thermopix {

void UnavailableUpdater::checkForUpdates() {
    log_.diag("update", "this build does not update itself; new versions come from where it was installed from");
}

}  // namespace thermopix
