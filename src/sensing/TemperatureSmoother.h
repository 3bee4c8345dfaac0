#pragma once

#include <cstdint>
#include <optional>

#include "sensing/TemperatureUnit.h"

namespace thermopix {

/// Blends readings exponentially and moves the shown whole number only when the blend is `deadband` display degrees
/// away from it.
class TemperatureSmoother {
public:
    /// `newestWeight` is 0 to 1; `minimumChange` is in display degrees.
    TemperatureSmoother(double newestWeight, double minimumChange) : alpha(newestWeight), deadband(minimumChange) {}

    /// Takes a finite reading and returns the whole number to show, halves rounded away from zero.
    std::int64_t accept(double celsius, TemperatureUnit unit);

    /// Forgets all readings; the two settings stay.
    void reset();

    [[nodiscard]] std::optional<double> smoothedCelsius() const { return smoothedCelsius_; }
    [[nodiscard]] std::optional<std::int64_t> displayed() const { return displayed_; }
    [[nodiscard]] std::optional<TemperatureUnit> displayedUnit() const { return displayedUnit_; }

    friend bool operator==(const TemperatureSmoother&, const TemperatureSmoother&) = default;

    double alpha;
    double deadband;

private:
    std::optional<double> smoothedCelsius_;
    std::optional<std::int64_t> displayed_;
    std::optional<TemperatureUnit> displayedUnit_;
};

}  // namespace thermopix
