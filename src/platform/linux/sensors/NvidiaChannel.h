#pragma once

#include <memory>
#include <optional>

#include "platform/linux/sensors/NvidiaCards.h"
#include "platform/linux/sensors/RuntimePower.h"
#include "platform/linux/sensors/SensorChannel.h"
#include "platform/linux/sensors/SensorDevice.h"
#include "platform/linux/sensors/SensorPolling.h"

namespace thermopix {

/// The die of a graphics card that only its vendor's library can read; a sleeping card is left alone, and each
/// reading asks first, since the library would wake it.
class NvidiaChannel final : public SensorChannel {
public:
    /// `cards` and `polling` outlive the channel.
    NvidiaChannel(FileAccess& access, const SensorDevice& device, NvidiaCards& cards, SensorPolling& polling);

    [[nodiscard]] std::optional<double> read() override;
    [[nodiscard]] bool isAwaited() const override { return card_->isAwaited; }

private:
    NvidiaCards& cards_;
    SensorPolling& polling_;
    std::shared_ptr<NvidiaCards::Card> card_;
    RuntimePower power_;
};

}  // namespace thermopix
