#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// System values by the names of sysctl.
namespace thermopix::Machine {

/// The text up to its first zero byte, repaired to UTF-8; "unknown" on any failure.
[[nodiscard]] std::string string(const char* name);

/// A 32-bit value; none on failure.
[[nodiscard]] std::optional<std::int32_t> integer(const char* name);

[[nodiscard]] inline std::string model() {
    return string("hw.model");
}
[[nodiscard]] inline std::string cpu() {
    return string("machdep.cpu.brand_string");
}

}  // namespace thermopix::Machine
