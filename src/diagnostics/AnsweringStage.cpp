#include "diagnostics/AnsweringStage.h"

#include <algorithm>

namespace thermopix {

std::optional<AnsweringStage> answeringStage(SensorSource source, std::span<const SensorSample> samples) {
    const auto stages = samplingStages(source);
    for (std::size_t index = 0; index < stages.size(); ++index) {
        const auto patterns = stages[index];
        if (std::any_of(samples.begin(), samples.end(),
                        [&](const auto& sample) { return matches(sample.name, patterns); })) {
            return AnsweringStage{index, patterns};
        }
    }
    return std::nullopt;
}

std::span<const NamePatterns> stagesRead(SensorSource source, std::span<const SensorSample> samples) {
    const auto stages = samplingStages(source);
    const auto answering = answeringStage(source, samples);
    return answering ? stages.first(answering->index + 1) : stages;
}

bool matchesAnyStage(const SensorSample& sample, std::span<const NamePatterns> stages) {
    return std::any_of(stages.begin(), stages.end(),
                       [&](const auto& patterns) { return matches(sample.name, patterns); });
}

}  // namespace thermopix
