#include "platform/macos/application/MacUpdater.h"
#include "system/UnavailableUpdater.h"

namespace thermopix {

std::unique_ptr<UpdaterManaging> makeMacUpdater(DiagnosticLog& log) {
    return std::make_unique<UnavailableUpdater>(log);
}

}  // namespace thermopix
