#include "platform/linux/sensors/NvidiaChannel.h"

namespace thermopix {

NvidiaChannel::NvidiaChannel(FileAccess& access, const SensorDevice& device, NvidiaCards& cards)
    : cards_(cards),
      card_(cards.card(device.device.filename())),
      power_(access, device.device, RuntimePower::Asked::always) {}

std::optional<double> NvidiaChannel::read() {
    if (power_.isAsleep()) {
        cards_.drop(*card_);
        return std::nullopt;
    }
    return cards_.readInPlace(*card_);
}

}  // namespace thermopix
