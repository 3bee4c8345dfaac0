#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/machine/MachineFactFiles.h"
#include "system/SystemInformation.h"

namespace thermopix {

/// Facts from sysfs, `/proc` and `os-release` under the names that the reports ask for. Below another root than
/// "/sys", a captured machine, what sysfs does not hold is read from `capture/cpuinfo`, `capture/os-release` and
/// `capture/osrelease` below that root and never from this machine.
class LinuxSystemInformation final : public SystemInformation {
public:
    explicit LinuxSystemInformation(std::filesystem::path root);

    /// "hw.model" and "machdep.cpu.brand_string".
    [[nodiscard]] std::optional<std::string> bytes(std::string_view name) const override;

    /// "kern.hv_vmm_present": 1 in a virtual machine, 0 elsewhere, none when nothing tells.
    [[nodiscard]] std::optional<std::int32_t> integer(std::string_view name) const override;

    /// Such as "Debian GNU/Linux 12 (bookworm), Linux 6.1.0"; "unknown" when nothing tells.
    [[nodiscard]] std::string operatingSystemVersion() const override;

    [[nodiscard]] std::string bundlePath() const override;
    [[nodiscard]] std::optional<std::string> bundleInformation(std::string_view key) const override;

private:
    [[nodiscard]] std::optional<std::string> identity(std::string_view name) const;
    [[nodiscard]] std::optional<std::string> model() const;

    std::filesystem::path root_;
    MachineFactFiles facts_;
};

}  // namespace thermopix
