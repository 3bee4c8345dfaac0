#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/linux/sensors/NvmlLibrary.h"
#include "platform/linux/sensors/RuntimePower.h"
#include "platform/linux/sensors/SensorChannel.h"
#include "platform/linux/sensors/SensorDevice.h"

namespace thermopix {

/// The die of a graphics card that only its vendor's library can read; a sleeping card is left alone, and each
/// reading asks first, since the library would wake it.
class NvmlChannel final : public SensorChannel {
public:
    NvmlChannel(FileAccess& access, const SensorDevice& card, std::shared_ptr<NvmlLibrary> library);
    ~NvmlChannel() override;

    [[nodiscard]] std::optional<double> read() override;

private:
    std::shared_ptr<NvmlLibrary> library_;
    std::string pciAddress_;
    RuntimePower power_;
    NvmlLibrary::Use use_;
};

}  // namespace thermopix
