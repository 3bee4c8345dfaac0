#pragma once

#include <optional>

#include "platform/linux/sensors/RuntimePower.h"
#include "platform/linux/sensors/SensorChannel.h"
#include "platform/linux/sensors/SensorDevice.h"
#include "platform/linux/sensors/SysfsFile.h"

namespace thermopix {

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

/// Degrees Celsius from the kernel's thousandths.
[[nodiscard]] constexpr double degrees(std::int64_t millidegrees) {
    return static_cast<double>(millidegrees) / 1000.0;
}

}  // namespace thermopix
