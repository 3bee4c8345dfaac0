#include "platform/linux/sensors/NvidiaChannel.h"

namespace thermopix {

NvidiaChannel::NvidiaChannel(FileAccess& access, const SensorDevice& device, NvidiaCards& cards, SensorPolling& polling)
    : cards_(cards),
      polling_(polling),
      card_(cards.card(device.device.filename())),
      power_(access, device.device, RuntimePower::Asked::always) {}

std::optional<double> NvidiaChannel::read() {
    if (power_.isAsleep()) {
        cards_.drop(*card_);
        return std::nullopt;
    }
    return polling_.reader() == nullptr ? cards_.readInPlace(*card_) : cards_.read(*card_, polling_.interval());
}

}  // namespace thermopix
