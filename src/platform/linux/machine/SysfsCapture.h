#pragma once

#include <filesystem>

#include "system/SensorCapture.h"

namespace thermopix {

/// Captures what is read of a sysfs tree, and nothing else of it: hardware monitors, thermal zones, cooling devices,
/// graphics cards of their vendor's library, the machine's make and model. Sleeping devices are not read, and hardware
/// addresses in names are masked.
class SysfsCapture final : public SensorCapture {
public:
    explicit SysfsCapture(std::filesystem::path root) : root_(std::move(root)) {}

    [[nodiscard]] SensorCaptureResult captureTo(const std::filesystem::path& folder) override;

private:
    std::filesystem::path root_;
};

}  // namespace thermopix
