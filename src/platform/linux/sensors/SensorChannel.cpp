#include "platform/linux/sensors/SensorChannel.h"

#include <utility>

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
    return millidegrees ? std::optional(static_cast<double>(*millidegrees) / 1000.0) : std::nullopt;
}

NvmlChannel::NvmlChannel(FileAccess& access, const SensorDevice& card, std::shared_ptr<NvmlLibrary> library)
    : library_(std::move(library)),
      pciAddress_(card.device.filename()),
      power_(access, card.device, RuntimePower::Asked::always) {}

NvmlChannel::~NvmlChannel() {
    library_->drop(use_);
}

std::optional<double> NvmlChannel::read() {
    if (power_.isAsleep()) {
        library_->drop(use_);
        return std::nullopt;
    }
    return library_->read(use_, pciAddress_.c_str());
}

}  // namespace thermopix
