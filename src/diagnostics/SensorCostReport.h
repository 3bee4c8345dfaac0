#pragma once

#include <span>

#include "diagnostics/ReadCost.h"
#include "platform/StandardOutput.h"
#include "sensing/SensorSample.h"

namespace thermopix {

/// Prints what reading costs: each source's refresh tick, each family of sensors, and all sensors at once.
/// `samples` are the readable sensors.
void printSensorCosts(std::span<const SensorSample> samples, const ReadCost& cost, StandardOutput& output);

}  // namespace thermopix
