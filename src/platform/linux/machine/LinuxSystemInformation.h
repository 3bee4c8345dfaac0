#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/machine/MachineFactFiles.h"
#include "system/SystemInformation.h"

namespace thermopix {

/// Facts from sysfs, `/proc` and `os-release`. Below another root than "/sys", a captured machine, what sysfs does not
/// hold is read from `capture/cpuinfo`, `capture/os-release` and `capture/osrelease` below that root and never from
/// this machine.
class LinuxSystemInformation final : public SystemInformation {
public:
    explicit LinuxSystemInformation(std::filesystem::path root);

    [[nodiscard]] std::string model() const override;
    [[nodiscard]] std::string processor() const override;
    [[nodiscard]] bool isVirtualMachine() const override;

    /// Such as "Debian GNU/Linux 12 (bookworm), Linux 6.1.0".
    [[nodiscard]] std::string operatingSystemVersion() const override;

    [[nodiscard]] std::string bundlePath() const override;
    [[nodiscard]] std::optional<std::string> shortVersion() const override;
    [[nodiscard]] std::optional<std::string> build() const override;

private:
    [[nodiscard]] std::optional<std::string> identity(std::string_view name) const;

    std::filesystem::path root_;
    MachineFactFiles facts_;
};

}  // namespace thermopix
