#include "platform/linux/sensors/RuntimePower.h"

#include <array>

#include "platform/linux/sensors/SysfsTree.h"

namespace thermopix {

RuntimePower::RuntimePower(FileAccess& access, const std::filesystem::path& device, Asked asked) {
    const auto power = device / "power";
    const auto status = readLine(power / "runtime_status");
    const bool isManaged = status && *status != "unsupported";
    if (isManaged && (asked == Asked::always || readLine(power / "control") == "auto")) {
        status_ = SysfsFile(access, power / "runtime_status");
    }
}

bool RuntimePower::isAsleep() const {
    if (!status_.isOpen()) {
        return false;
    }
    std::array<char, 16> buffer;
    const auto status = status_.read(buffer);
    return !status || !(status->starts_with("active") || status->starts_with("resuming"));
}

}  // namespace thermopix
