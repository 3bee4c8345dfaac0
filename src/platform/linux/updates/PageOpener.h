#pragma once

#include <string>

#include "system/DiagnosticLog.h"

namespace thermopix {

/// Opens a page in the user's browser, through the portal where the program is confined; a failure is logged with the
/// address. `log` lives as long as the process. Main thread.
void openPage(const std::string& page, const std::string& activationToken, DiagnosticLog& log);

}  // namespace thermopix
