#pragma once

#include <optional>

#include "platform/linux/sensors/RuntimePower.h"
#include "platform/linux/sensors/SensorDevice.h"

namespace thermopix {

/// One temperature of the machine, read on demand by one thread at a time.
class SensorChannel {
public:
    virtual ~SensorChannel() = default;

    /// Degrees Celsius now; none when the sensor fails, reports a fault, or its device sleeps.
    [[nodiscard]] virtual std::optional<double> read() = 0;

    /// Whether the last read is without an answer only because the sensor has not answered yet.
    [[nodiscard]] virtual bool isAwaited() const { return false; }

    /// Whether the last read found that a device which has answered before is there no more.
    [[nodiscard]] virtual bool isGone() const { return false; }
};

/// A temperature that the kernel publishes as a file. Costs one read, one more where the channel can report a fault,
/// and one more where the device can sleep; a sleeping device is left alone.
class SysfsChannel final : public SensorChannel {
public:
    SysfsChannel(FileAccess& access, const SensorDevice& device, const SensorDevice::Channel& channel);

    /// Whether the file could be opened at all.
    [[nodiscard]] bool isOpen() const { return input_.isOpen(); }

    [[nodiscard]] std::optional<double> read() override;
    [[nodiscard]] bool isGone() const override { return isGone_; }

private:
    SysfsFile input_;
    SysfsFile fault_;
    RuntimePower power_;
    bool hasAnswered_ = false;
    bool isGone_ = false;
};

}  // namespace thermopix
