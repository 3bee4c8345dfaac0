#pragma once

#include <string>

namespace thermopix {

/// One reading: the sensor's name exactly as its backend reported it, and degrees Celsius.
struct SensorSample {
    std::string name;
    double celsius = 0;

    friend bool operator==(const SensorSample&, const SensorSample&) = default;
};

}  // namespace thermopix
