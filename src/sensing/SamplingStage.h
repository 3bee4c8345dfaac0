#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sensing/SensorSource.h"
#include "sensing/TemperatureSensing.h"

namespace thermopix {

/// One list of patterns that a source tries, poll after poll. A backend asks about the same names in the same order
/// each time, so the answers are kept, as is the memory of the samples. Main thread.
class SamplingStage {
public:
    /// A stage without patterns finds nothing.
    explicit SamplingStage(NamePatterns patterns = {}) : patterns_(patterns) {}

    /// Reads the sensors whose names match; the hottest, or none when none could be read.
    [[nodiscard]] std::optional<double> sample(TemperatureSensing& sensor);

    /// What the last call of `sample` read.
    [[nodiscard]] const std::vector<SensorSample>& samples() const { return samples_; }

private:
    struct Answer {
        std::string name;
        bool isMatch;
    };

    [[nodiscard]] bool matchesStage(std::string_view name);
    /// Moves `next_` on to the answer about this name.
    void seek(std::string_view name);

    NamePatterns patterns_;
    std::vector<SensorSample> samples_;
    /// In the order of the questions.
    std::vector<Answer> answers_;
    /// Where the answer to the next question is expected; only while `sample` runs.
    std::vector<Answer>::iterator next_;
};

}  // namespace thermopix
