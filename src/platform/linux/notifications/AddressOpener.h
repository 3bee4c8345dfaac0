#pragma once

#include <functional>
#include <string>

#include "base/Subscription.h"
#include "system/DiagnosticLog.h"

namespace thermopix {

/// Tells, later, whether the desktop has a program for the address's scheme. Main thread.
Subscription findOpener(const std::string& address, std::function<void(bool)> told);

/// Opens the address in that program, through the portal where this one is confined; a failure is logged. The token,
/// where the desktop gave one, lets the program come to the front. `log` lives as long as the process. Main thread.
void openAddress(const std::string& address, const std::string& activationToken, DiagnosticLog& log);

}  // namespace thermopix
