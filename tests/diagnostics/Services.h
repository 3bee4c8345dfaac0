#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "fakes/ScriptedHIDLoader.h"
#include "sensing/FakeTemperatureSensor.h"

namespace thermopix {

using Services = std::vector<ScriptedHIDLoader::Service>;

[[nodiscard]] inline Services servicesOf(const std::vector<SensorSample>& samples) {
    Services services;
    for (const auto& sample : samples) {
        services.push_back({sample.name, sample.celsius});
    }
    return services;
}

/// The twelve sensors of the scripted laptop.
[[nodiscard]] inline Services laptopServices() {
    return servicesOf(FakeTemperatureSensor::appleSiliconFixture());
}

}  // namespace thermopix
