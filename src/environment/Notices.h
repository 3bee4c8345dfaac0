#pragma once

#include <string_view>

#include "system/UserNotices.h"

namespace thermopix {

/// What the user is told when settings cannot be stored, whatever the cause.
[[nodiscard]] UserNotice settingsNotSavedNotice(std::string_view cause);

/// What the user is told when the system refuses to open the program at login, or to stop doing so.
[[nodiscard]] UserNotice openAtLoginNotice(std::string_view reason);

}  // namespace thermopix
