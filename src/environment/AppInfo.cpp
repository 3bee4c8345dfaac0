#include "environment/AppInfo.h"

namespace thermopix::AppInfo {

std::string shortVersion(const SystemInformation& system) {
    return system.shortVersion().value_or("—");
}

std::string build(const SystemInformation& system) {
    return system.build().value_or("—");
}

}  // namespace thermopix::AppInfo
