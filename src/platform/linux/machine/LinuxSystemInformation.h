#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "system/SystemInformation.h"

namespace thermopix {

/// Where the facts are that sysfs does not hold: in `/proc` and `/etc` for the machine itself, below `capture` in a
/// captured tree.
struct MachineFactFiles {
    std::filesystem::path processors;
    std::filesystem::path release;
    std::filesystem::path kernel;
};

[[nodiscard]] MachineFactFiles machineFactFiles(const std::filesystem::path& root);

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
