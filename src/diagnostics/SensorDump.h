#pragma once

#include <cstdint>

#include "system/Platform.h"
#include "system/StandardOutput.h"

namespace thermopix::SensorDump {

/// Prints the sensor report; 0 when at least one sensor was readable, else 1.
[[nodiscard]] std::int32_t run(Platform& platform, StandardOutput& output);

}  // namespace thermopix::SensorDump
