#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "sensing/Display.h"
#include "sensing/ReadingOrigin.h"
#include "sensing/SamplingStage.h"
#include "sensing/SensorSource.h"
#include "sensing/TemperatureSensing.h"
#include "sensing/TemperatureSmoother.h"
#include "system/DiagnosticLog.h"

namespace thermopix {

/// Turns a backend's readings into a `Display`, one poll a refresh tick: picks the answering stage, smooths, holds
/// the last value through short failures, blanks after longer ones and asks for rediscovery. Main thread.
class TemperatureMonitor {
public:
    using PressureReader = std::function<ThermalPressure()>;

    static constexpr double hotThresholdCelsius = 85.0;
    static constexpr std::int64_t failuresBeforeBlanking = 3;
    static constexpr std::int64_t failuresBetweenRediscovery = 15;

    /// `sensor` and `log` outlive the monitor.
    TemperatureMonitor(TemperatureSensing& sensor, PressureReader pressureReader, DiagnosticLog& log);

    [[nodiscard]] Display poll(SensorSource source, TemperatureUnit unit);

    /// Forgets readings and failures and rediscovers the sensors.
    void reset();

    [[nodiscard]] bool isSensorAvailable() const { return sensor_.isAvailable(); }

    /// How many sensors deliver an accepted reading, counted until all have answered and then kept until `reset()`.
    [[nodiscard]] std::int64_t readableSensorCount();

    /// The samples of the stage that answered the last poll; empty after a failed one.
    [[nodiscard]] const std::vector<SensorSample>& lastSamples() const { return stages_[lastStage_].samples(); }

    /// What the reading that is shown comes from; none while none is.
    [[nodiscard]] const std::optional<ReadingOrigin>& origin() const { return origin_; }

private:
    void follow(SensorSource source);
    /// The hottest of the first stage that answers; a stage whose answer is still to come is not passed over.
    [[nodiscard]] std::optional<double> sampleStages();
    /// Takes down which stage has answered, and says so when it is another than before.
    void noteAnswer();
    [[nodiscard]] Display displayOfReading(double celsius, TemperatureUnit unit, ThermalPressure pressure);
    [[nodiscard]] Display displayWithoutReading(TemperatureUnit unit, ThermalPressure pressure);
    void rediscoverIfDue();

    TemperatureSensing& sensor_;
    PressureReader pressureReader_;
    DiagnosticLog& log_;
    TemperatureSmoother smoother_;
    std::int64_t consecutiveFailures_ = 0;
    std::optional<SensorSource> smoothedSource_;
    std::optional<PetMood> lastMood_;
    /// The stages of the smoothed source, never empty, and which of them answered the last poll or was asked last.
    std::vector<SamplingStage> stages_ = std::vector<SamplingStage>(1);
    std::size_t lastStage_ = 0;
    std::optional<ReadingOrigin> origin_;
    /// The stage that the log knows of.
    std::size_t loggedStage_ = 0;
    std::optional<std::int64_t> cachedReadableSensorCount_;
};

}  // namespace thermopix
