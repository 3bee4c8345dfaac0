#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "sensing/TemperatureSensing.h"
#include "system/DiagnosticLog.h"
#include "system/HIDSymbols.h"

namespace thermopix {

/// The temperature sensors that the HID event system publishes, read through a table of entry points. Readings
/// outside 1 to 150 degrees Celsius are dropped one by one. Main thread.
class HIDTemperatureSensor final : public TemperatureSensing {
public:
    struct Ready {
        std::int64_t sensorCount;
        friend bool operator==(const Ready&, const Ready&) = default;
    };
    struct SymbolsUnavailable {
        std::string missing;
        friend bool operator==(const SymbolsUnavailable&, const SymbolsUnavailable&) = default;
    };
    struct NoSensorsPublished {
        std::int64_t servicesSeen;
        friend bool operator==(const NoSensorsPublished&, const NoSensorsPublished&) = default;
    };
    struct ClientUnavailable {
        friend bool operator==(const ClientUnavailable&, const ClientUnavailable&) = default;
    };
    using Availability = std::variant<NoSensorsPublished, Ready, SymbolsUnavailable, ClientUnavailable>;

    struct NamedService {
        std::string name;
        HIDObject service;
    };

    static constexpr double minimumPlausibleCelsius = 1.0;
    static constexpr double maximumPlausibleCelsius = 150.0;

    /// Loads, connects and discovers, and logs how that went; never fails. `log` outlives the sensor.
    HIDTemperatureSensor(HIDSymbolLoader& loader, DiagnosticLog& log);
    ~HIDTemperatureSensor() override;

    using TemperatureSensing::sample;
    [[nodiscard]] bool isAvailable() const override;
    void sample(SensorNamePredicate wanted, std::vector<SensorSample>& samples) override;
    void refresh() override;
    [[nodiscard]] bool isAwaitingAnswer() const override { return isAwaitingAnswer_; }

    [[nodiscard]] const Availability& availability() const { return availability_; }

    /// The services that carry a name, in the order in which the system listed them.
    [[nodiscard]] const std::vector<NamedService>& sensors() const { return sensors_; }

    /// One service read now, in degrees Celsius; none without an event or outside the plausible band.
    [[nodiscard]] std::optional<double> read(const NamedService& sensor) const;

private:
    void resolveSensors();
    [[nodiscard]] bool isAwaited(const NamedService& sensor) const;

    DiagnosticLog& log_;
    std::optional<HIDSymbols> symbols_;
    HIDObject client_;
    std::vector<NamedService> sensors_;
    Availability availability_;
    bool isAwaitingAnswer_ = false;
};

[[nodiscard]] bool isPlausible(double celsius);

/// The availability in one line, for log and reports.
[[nodiscard]] std::string summary(const HIDTemperatureSensor::Availability& availability);

}  // namespace thermopix
