#include "environment/AppInfo.h"

namespace thermopix::AppInfo {

namespace {

constexpr std::string_view missing = "—";

std::string information(const SystemInformation& system, std::string_view key) {
    return system.bundleInformation(key).value_or(std::string(missing));
}

}  // namespace

std::string shortVersion(const SystemInformation& system) {
    return information(system, "CFBundleShortVersionString");
}

std::string build(const SystemInformation& system) {
    return information(system, "CFBundleVersion");
}

}  // namespace thermopix::AppInfo
