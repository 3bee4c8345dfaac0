#pragma once

#include <optional>
#include <variant>

#include "sensing/ThermalPressure.h"

namespace thermopix {

/// A reading in degrees Celsius, or its absence with the thermal pressure that stands in for it.
class Readout {
public:
    [[nodiscard]] static Readout celsius(double value) { return Readout(value); }
    [[nodiscard]] static Readout unavailable(ThermalPressure pressure) { return Readout(pressure); }

    [[nodiscard]] std::optional<double> celsiusValue() const {
        const auto* value = std::get_if<double>(&content_);
        return value == nullptr ? std::nullopt : std::optional(*value);
    }

    friend bool operator==(const Readout&, const Readout&) = default;

private:
    explicit Readout(std::variant<double, ThermalPressure> content) : content_(content) {}

    std::variant<double, ThermalPressure> content_;
};

}  // namespace thermopix
