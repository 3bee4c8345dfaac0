#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace thermopix {

/// Facts about the machine, the system and the program's own bundle; any thread, asked each time.
class SystemInformation {
public:
    virtual ~SystemInformation() = default;

    /// The raw bytes of a named system value ("hw.model", "machdep.cpu.brand_string"); none on failure.
    [[nodiscard]] virtual std::optional<std::string> bytes(std::string_view name) const = 0;

    /// A named 32-bit system value ("kern.hv_vmm_present"); none on failure.
    [[nodiscard]] virtual std::optional<std::int32_t> integer(std::string_view name) const = 0;

    /// The operating system's name and version as a person reads it.
    [[nodiscard]] virtual std::string operatingSystemVersion() const = 0;

    /// The real path of the folder that holds the program.
    [[nodiscard]] virtual std::string bundlePath() const = 0;

    /// A text of the bundle's information ("CFBundleShortVersionString", "CFBundleVersion"); none when it is
    /// missing or no text.
    [[nodiscard]] virtual std::optional<std::string> bundleInformation(std::string_view key) const = 0;
};

}  // namespace thermopix
