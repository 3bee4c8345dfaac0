#include "environment/Notices.h"

#include <fmt/core.h>

#include <string>

#include "environment/AppInfo.h"

namespace thermopix {

UserNotice settingsNotSavedNotice(std::string_view cause) {
    return {.title = fmt::format("{} cannot save its settings", AppInfo::name),
            .body = fmt::format("{}. What you choose holds while {} runs, and is saved as soon as that is possible.",
                                cause, AppInfo::name)};
}

UserNotice openAtLoginNotice(std::string_view reason) {
    return {.title = "\"Open at login\" could not be changed", .body = fmt::format("{}.", reason)};
}

UserNotice windowsNotShownNotice(std::string_view reason) {
    return {.title = fmt::format("{} cannot show its windows", AppInfo::name), .body = std::string(reason)};
}

}  // namespace thermopix
