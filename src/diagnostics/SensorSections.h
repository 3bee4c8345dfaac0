#pragma once

#include <cstddef>
#include <set>
#include <span>
#include <string>

#include "sensing/SensorSample.h"
#include "system/StandardOutput.h"

namespace thermopix {

/// "1 sensor", "2 sensors".
[[nodiscard]] std::string sensorCountText(std::size_t count);

/// Prints, for each source, the sensors that a refresh tick reads, hottest first; returns the names that it showed.
[[nodiscard]] std::set<std::string> printSourceSections(std::span<const SensorSample> samples, StandardOutput& output);

/// Prints the sensors that no source section showed: those of stages that no tick reaches, and those of no source.
void printLeftOverSensors(std::span<const SensorSample> samples, const std::set<std::string>& shown,
                          StandardOutput& output);

}  // namespace thermopix
