#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "system/SystemInformation.h"

/// System values by name, as reports print them.
namespace thermopix::Machine {

/// The text up to its first zero byte, repaired to UTF-8; "unknown" on any failure.
[[nodiscard]] std::string string(const SystemInformation& system, std::string_view name);
[[nodiscard]] std::optional<std::int32_t> integer(const SystemInformation& system, std::string_view name);
[[nodiscard]] std::string model(const SystemInformation& system);
[[nodiscard]] std::string cpu(const SystemInformation& system);

}  // namespace thermopix::Machine
