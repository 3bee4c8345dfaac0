#pragma once

#include <span>

#include "diagnostics/ReadCost.h"
#include "sensing/SensorSample.h"
#include "system/StandardOutput.h"

namespace thermopix {

/// Prints what reading costs: each source's refresh tick, each family of sensors, and all sensors at once.
/// `samples` are the readable sensors.
void printSensorCosts(std::span<const SensorSample> samples, ReadCost& cost, StandardOutput& output);

}  // namespace thermopix
