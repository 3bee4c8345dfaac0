#pragma once

#include <filesystem>

#include "platform/linux/sensors/SysfsFile.h"

namespace thermopix {

/// The runtime power state of a device that the kernel may put to sleep while the machine runs. Asking does not wake
/// the device.
class RuntimePower {
public:
    /// A device that is never put to sleep; asking about it reads nothing.
    RuntimePower() = default;

    /// A device whose `power/control` forbids sleep is not asked, unless asking is for `always`.
    enum class Asked { whereManaged, always };
    RuntimePower(FileAccess& access, const std::filesystem::path& device, Asked asked = Asked::whereManaged);

    /// Whether the device sleeps, falls asleep, or does not say: then it must not be touched. One read where asked.
    [[nodiscard]] bool isAsleep() const;

private:
    SysfsFile status_;
};

}  // namespace thermopix
