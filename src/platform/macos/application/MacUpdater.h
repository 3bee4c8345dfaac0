#pragma once

#include <memory>

#include "system/DiagnosticLog.h"
#include "system/UpdaterManaging.h"

namespace thermopix {

/// The updater that this build was made with: the update framework's, or one that says that there is none. `log`
/// outlives it.
[[nodiscard]] std::unique_ptr<UpdaterManaging> makeMacUpdater(DiagnosticLog& log);

}  // namespace thermopix
