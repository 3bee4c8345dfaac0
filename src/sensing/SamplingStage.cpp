#include "sensing/SamplingStage.h"

#include <algorithm>

namespace thermopix {

std::optional<double> SamplingStage::sample(TemperatureSensing& sensor) {
    const auto isMatch = [this](std::string_view name) { return matchesStage(name); };
    next_ = answers_.begin();
    sensor.sample(isMatch, samples_);
    next_ = answers_.begin();
    return reduce(samples_, isMatch);
}

bool SamplingStage::matchesStage(std::string_view name) {
    if (next_ == answers_.end() || next_->name != name) [[unlikely]] {
        seek(name);
    }
    return (next_++)->isMatch;
}

void SamplingStage::seek(std::string_view name) {
    const auto known =
        std::find_if(next_, answers_.end(), [name](const Answer& answer) { return answer.name == name; });
    if (known != answers_.end()) {
        next_ = known;
        return;
    }
    // The sensors have changed: the answers from here on are of no use any more.
    answers_.erase(next_, answers_.end());
    answers_.push_back({std::string(name), matches(name, patterns_)});
    next_ = answers_.end() - 1;
}

}  // namespace thermopix
