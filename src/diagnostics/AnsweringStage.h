#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "sensing/SensorSample.h"
#include "sensing/SensorSource.h"

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

}  // namespace thermopix
