#include "platform/macos/system/MacSystemLog.h"

#import <os/log.h>

#include <string>

#include "environment/AppInfo.h"

namespace thermopix {

void MacSystemLog::write(std::string_view category, std::string_view message) {
    // The system keeps one log for each subsystem and category and hands it out again.
    os_log_t log = os_log_create(std::string(AppInfo::identifier).c_str(), std::string(category).c_str());
    os_log(log, "%{public}s", std::string(message).c_str());
}

}  // namespace thermopix
