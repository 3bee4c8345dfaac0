#include "sensing/PetMood.h"

#include <algorithm>
#include <cstddef>

namespace thermopix {

namespace {

constexpr std::array thresholds{
    MoodThreshold{PetMood::chilly, 45.0},
    MoodThreshold{PetMood::content, 65.0},
    MoodThreshold{PetMood::warm, 85.0},
};
static_assert(thresholds.size() + 1 == caseCount<PetMood>);

constexpr double coolingMarginCelsius = 3.0;

PetMood moodOfBand(double celsius) {
    const auto* const band = std::find_if(thresholds.begin(), thresholds.end(), [&](const MoodThreshold& threshold) {
        return threshold.upperBound > celsius;
    });
    return band == thresholds.end() ? PetMood::scorching : band->mood;
}

}  // namespace

std::span<const MoodThreshold> moodThresholds() {
    return thresholds;
}

PetMood mood(double celsius, ThermalPressure pressure, std::optional<PetMood> previous) {
    if (isElevated(pressure)) {
        return PetMood::scorching;
    }
    const PetMood candidate = moodOfBand(celsius);
    if (!previous || candidate >= *previous) {
        return candidate;
    }
    const double lowerBoundOfPrevious = thresholds[static_cast<std::size_t>(*previous) - 1].upperBound;
    return celsius > lowerBoundOfPrevious - coolingMarginCelsius ? *previous : candidate;
}

}  // namespace thermopix
