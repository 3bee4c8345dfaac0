#include "platform/linux/sensors/SensorChannel.h"

#include <cerrno>

namespace thermopix {

SysfsChannel::SysfsChannel(FileAccess& access, const SensorDevice& device, const SensorDevice::Channel& channel)
    : input_(access, channel.input), power_(access, device.device) {
    if (!channel.fault.empty()) {
        fault_ = SysfsFile(access, channel.fault);
    }
}

std::optional<double> SysfsChannel::read() {
    if (power_.isAsleep() || (fault_.isOpen() && fault_.readInteger() == 1)) {
        return std::nullopt;
    }
    const auto millidegrees = input_.readInteger();
    if (!millidegrees) {
        isGone_ = hasAnswered_ && errno == ENODEV;
        return std::nullopt;
    }
    hasAnswered_ = true;
    isGone_ = false;
    return static_cast<double>(*millidegrees) / 1000.0;
}

}  // namespace thermopix
