#pragma once

#include <string_view>

#include "system/UserNotices.h"

namespace thermopix {

/// What the user is told when settings cannot be stored, whatever the cause.
[[nodiscard]] UserNotice settingsNotSavedNotice(std::string_view cause);

/// What the user is told when the system refuses to open the program at login, or to stop doing so.
[[nodiscard]] UserNotice openAtLoginNotice(std::string_view reason);

/// What the user is told when there is no process for the windows, or it has failed; `reason` is a sentence.
[[nodiscard]] UserNotice windowsNotShownNotice(std::string_view reason);

/// What the system may show when it asks the user about opening the program at login.
inline constexpr const char* openAtLoginReason = "It shows the temperature from login on.";

}  // namespace thermopix
