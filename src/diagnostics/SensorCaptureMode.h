#pragma once

#include <cstdint>
#include <string>

#include "system/SensorCapture.h"
#include "system/StandardOutput.h"

namespace thermopix::SensorCaptureMode {

/// Captures the machine's sensors into a folder and says so in one line; 0, or 1 on failure. `capture` is null where
/// the system has nothing to capture.
[[nodiscard]] std::int32_t run(const std::string& directory, SensorCapture* capture, StandardOutput& output);

}  // namespace thermopix::SensorCaptureMode
