#pragma once

#include <cstdint>
#include <optional>

#include "sensing/PetMood.h"
#include "sensing/TemperatureUnit.h"
#include "sensing/ThermalPressure.h"

namespace thermopix {

/// What every view draws: one reading, made presentable.
struct Display {
    /// Whole degrees in `unit`; none when there is no reading to show.
    std::optional<std::int64_t> value;
    TemperatureUnit unit = TemperatureUnit::celsius;
    ThermalPressure pressure = ThermalPressure::nominal;
    bool isHot = false;
    PetMood mood = PetMood::content;

    friend bool operator==(const Display&, const Display&) = default;
};

}  // namespace thermopix
