#include "diagnostics/SensorDiagnosis.h"

#include <fmt/format.h>

#include <variant>

namespace thermopix {

namespace {

using Lines = std::vector<std::string>;

struct Explanation {
    Lines operator()(const HIDTemperatureSensor::Ready& /*ready*/) const {
        return {"Sensors resolved but every reading fell outside the plausible band",
                "(1–150 °C). Please send this dump."};
    }
    Lines operator()(const HIDTemperatureSensor::SymbolsUnavailable& unavailable) const {
        return {
            fmt::format("This macOS no longer exports {}. The private IOKit interface the", unavailable.missing),
            "app reads has changed — the app needs a new sensor backend.",
        };
    }
    Lines operator()(const HIDTemperatureSensor::NoSensorsPublished& none) const {
        if (none.servicesSeen == 0) {
            return {
                "This Mac publishes no thermal HID services at all. Expected on Intel",
                "Macs (temperatures live behind AppleSMC there, not HID) and inside a",
                "VM. On Apple silicon this is a bug — please send this dump.",
            };
        }
        return {
            fmt::format("{} thermal HID services exist but none carries a Product name.", none.servicesSeen),
            "Please send this dump — the app matches sensors by name.",
        };
    }
    Lines operator()(const HIDTemperatureSensor::ClientUnavailable& /*unavailable*/) const {
        return {
            "The HID event system refused to open a client. Expected inside a",
            "sandbox; this build ships with no entitlements, so report this.",
        };
    }
};

}  // namespace

std::vector<std::string> sensorDiagnosis(const HIDTemperatureSensor::Availability& availability) {
    return std::visit(Explanation{}, availability);
}

}  // namespace thermopix
