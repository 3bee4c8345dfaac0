#pragma once

#include <string>
#include <vector>

#include "sensing/HIDTemperatureSensor.h"

namespace thermopix {

/// The lines that explain why no sensor could be read, chosen by the backend's state.
[[nodiscard]] std::vector<std::string> sensorDiagnosis(const HIDTemperatureSensor::Availability& availability);

}  // namespace thermopix
