#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <span>
#include <string>

#include "sensing/SensorSample.h"
#include "sensing/SensorSource.h"
#include "system/StandardOutput.h"

namespace thermopix {

/// The sampling stage that a refresh tick reads a source from.
struct AnsweringStage {
    /// Counted from zero.
    std::size_t index = 0;
    NamePatterns patterns;
};

/// The first stage of the source that any of the readable sensors belongs to; none when no stage has one.
[[nodiscard]] std::optional<AnsweringStage> answeringStage(SensorSource source, std::span<const SensorSample> samples);

/// The stages that a tick reads for the source: up to the answering one, or all when none answers.
[[nodiscard]] std::span<const NamePatterns> stagesRead(SensorSource source, std::span<const SensorSample> samples);

[[nodiscard]] bool matchesAnyStage(const SensorSample& sample, std::span<const NamePatterns> stages);

/// "1 sensor", "2 sensors".
[[nodiscard]] std::string sensorCountText(std::size_t count);

/// Prints, for each source, the sensors that a refresh tick reads, hottest first; returns the names that it showed.
[[nodiscard]] std::set<std::string> printSourceSections(std::span<const SensorSample> samples, StandardOutput& output);

/// Prints the sensors that no source section showed: those of stages that no tick reaches, and those of no source.
void printLeftOverSensors(std::span<const SensorSample> samples, const std::set<std::string>& shown,
                          StandardOutput& output);

}  // namespace thermopix
