#pragma once

#include <optional>

#include "platform/linux/sensors/RuntimePower.h"
#include "platform/linux/sensors/SensorDevice.h"

namespace thermopix {

/// One temperature of the machine, read on demand; main thread.
class SensorChannel {
public:
    virtual ~SensorChannel() = default;

    /// Degrees Celsius now; none when the sensor fails, reports a fault, or its device sleeps.
    [[nodiscard]] virtual std::optional<double> read() = 0;
};

/// A temperature that the kernel publishes as a file. Costs one read, one more where the channel can report a fault,
/// and one more where the device can sleep; a sleeping device is left alone.
class SysfsChannel final : public SensorChannel {
public:
    SysfsChannel(FileAccess& access, const SensorDevice& device, const SensorDevice::Channel& channel);

    /// Whether the file could be opened at all.
    [[nodiscard]] bool isOpen() const { return input_.isOpen(); }

    [[nodiscard]] std::optional<double> read() override;

private:
    SysfsFile input_;
    SysfsFile fault_;
    RuntimePower power_;
};

}  // namespace thermopix
