#include "platform/linux/sensors/NvmlChannel.h"

#include <utility>

namespace thermopix {

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
