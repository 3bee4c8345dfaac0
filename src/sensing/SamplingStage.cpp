#include "sensing/SamplingStage.h"

#include <algorithm>

namespace thermopix {

std::optional<double> SamplingStage::sample(TemperatureSensing& sensor) {
    const auto isMatch = [this](std::string_view name) { return matchesStage(name); };
    next_ = 0;
    sensor.sample(isMatch, samples_);
    next_ = 0;
    return reduce(samples_, isMatch);
}

bool SamplingStage::matchesStage(std::string_view name) {
    if (next_ == answers_.size() || answers_[next_].name != name) {
        seek(name);
    }
    return answers_[next_++].isMatch;
}

void SamplingStage::seek(std::string_view name) {
    const auto next = answers_.begin() + static_cast<std::ptrdiff_t>(next_);
    const auto known = std::find_if(next, answers_.end(), [name](const Answer& answer) { return answer.name == name; });
    if (known != answers_.end()) {
        next_ = static_cast<std::size_t>(known - answers_.begin());
        return;
    }
    // The sensors have changed: the answers from here on are of no use any more.
    answers_.erase(next, answers_.end());
    answers_.push_back({std::string(name), matches(name, patterns_)});
}

}  // namespace thermopix
