#pragma once

#include <string>
#include <string_view>

#include "system/SystemInformation.h"

namespace thermopix::AppInfo {

inline constexpr std::string_view name = "Thermopix";

/// The program's one identifier: bus name, log subsystem, desktop file.
inline constexpr std::string_view identifier = "io.github.thermopix.Thermopix";

/// From the bundle's information; an em dash when it is missing.
[[nodiscard]] std::string shortVersion(const SystemInformation& system);
[[nodiscard]] std::string build(const SystemInformation& system);

}  // namespace thermopix::AppInfo
