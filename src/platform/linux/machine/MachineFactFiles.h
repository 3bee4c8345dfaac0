#pragma once

#include <filesystem>

namespace thermopix {

/// Where the facts are that sysfs does not hold: in `/proc` and `/etc` for the machine itself, below `capture` in a
/// captured tree.
struct MachineFactFiles {
    std::filesystem::path processors;
    std::filesystem::path release;
    std::filesystem::path kernel;
};

[[nodiscard]] MachineFactFiles machineFactFiles(const std::filesystem::path& root);

}  // namespace thermopix
