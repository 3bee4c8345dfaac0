#include "sensing/TemperatureSmoother.h"

#include <cmath>

#include "base/Fatal.h"

namespace thermopix {

namespace {

std::int64_t roundedHalvesAway(double value) {
    constexpr double lowest = -0x1p63;
    constexpr double beyondHighest = 0x1p63;
    const double rounded = std::round(value);
    require(rounded >= lowest && rounded < beyondHighest, "a temperature has no whole number");
    return static_cast<std::int64_t>(rounded);
}

}  // namespace

std::int64_t TemperatureSmoother::accept(double celsius, TemperatureUnit unit) {
    const double blend = smoothedCelsius_ ? alpha * celsius + *smoothedCelsius_ * (1.0 - alpha) : celsius;
    smoothedCelsius_ = blend;

    const double value = valueFromCelsius(unit, blend);
    if (displayed_ && displayedUnit_ == unit && std::abs(value - static_cast<double>(*displayed_)) < deadband) {
        return *displayed_;
    }
    const std::int64_t shown = roundedHalvesAway(value);
    displayed_ = shown;
    displayedUnit_ = unit;
    return shown;
}

void TemperatureSmoother::reset() {
    smoothedCelsius_.reset();
    displayed_.reset();
    displayedUnit_.reset();
}

}  // namespace thermopix
