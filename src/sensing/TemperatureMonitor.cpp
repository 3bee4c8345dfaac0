#include "sensing/TemperatureMonitor.h"

#include <fmt/format.h>

#include <utility>

#include "base/Fatal.h"

namespace thermopix {

namespace {

constexpr double newestReadingWeight = 0.4;
constexpr double deadbandDegrees = 0.75;

}  // namespace

TemperatureMonitor::TemperatureMonitor(TemperatureSensing& sensor, PressureReader pressureReader, DiagnosticLog& log)
    : sensor_(sensor),
      pressureReader_(std::move(pressureReader)),
      log_(log),
      smoother_(newestReadingWeight, deadbandDegrees) {}

Display TemperatureMonitor::poll(SensorSource source, TemperatureUnit unit) {
    if (smoothedSource_ != source) {
        follow(source);
    }
    const auto reading = sampleStages();
    if (reading) {
        noteAnswer();
    }
    const ThermalPressure pressure = pressureReader_();
    return reading ? displayOfReading(*reading, unit, pressure) : displayWithoutReading(unit, pressure);
}

void TemperatureMonitor::reset() {
    smoother_.reset();
    consecutiveFailures_ = 0;
    smoothedSource_.reset();
    lastMood_.reset();
    cachedReadableSensorCount_.reset();
    sensor_.refresh();
}

std::int64_t TemperatureMonitor::readableSensorCount() {
    if (cachedReadableSensorCount_) {
        return *cachedReadableSensorCount_;
    }
    const auto count = static_cast<std::int64_t>(sensor_.sample().size());
    if (!sensor_.isAwaitingAnswer()) {
        cachedReadableSensorCount_ = count;
    }
    return count;
}

void TemperatureMonitor::follow(SensorSource source) {
    smoother_.reset();
    consecutiveFailures_ = 0;
    smoothedSource_ = source;
    stages_.clear();
    for (const NamePatterns patterns : samplingStages(source)) {
        stages_.emplace_back(patterns);
    }
    lastStage_ = 0;
    loggedStage_ = 0;
}

std::optional<double> TemperatureMonitor::sampleStages() {
    for (lastStage_ = 0;; ++lastStage_) {
        const auto hottest = stages_[lastStage_].sample(sensor_);
        if (hottest || lastStage_ + 1 == stages_.size() || sensor_.isAwaitingAnswer()) {
            return hottest;
        }
    }
}

void TemperatureMonitor::noteAnswer() {
    origin_ = {*smoothedSource_, lastStage_, lastStage_ == 0 ? 0 : lastSamples().size()};
    if (std::exchange(loggedStage_, lastStage_) != lastStage_) {
        log_.diag("sensor", lastStage_ == 0 ? "the sensors of the source answer again" : fallbackNote(*origin_));
    }
}

Display TemperatureMonitor::displayOfReading(double celsius, TemperatureUnit unit, ThermalPressure pressure) {
    consecutiveFailures_ = 0;
    const std::int64_t value = smoother_.accept(celsius, unit);
    const double smoothed = smoother_.smoothedCelsius().value_or(celsius);
    lastMood_ = mood(smoothed, pressure, lastMood_);
    return {value, unit, pressure, isElevated(pressure) || smoothed >= hotThresholdCelsius, *lastMood_};
}

Display TemperatureMonitor::displayWithoutReading(TemperatureUnit unit, ThermalPressure pressure) {
    consecutiveFailures_ = checkedAdd(consecutiveFailures_, 1);
    if (consecutiveFailures_ < failuresBeforeBlanking) {
        const auto smoothed = smoother_.smoothedCelsius();
        const bool isHot = isElevated(pressure) || (smoothed && *smoothed >= hotThresholdCelsius);
        return {smoother_.displayed(), unit, pressure, isHot, lastMood_.value_or(PetMood::content)};
    }
    rediscoverIfDue();
    origin_.reset();
    smoother_.reset();
    lastMood_ = isElevated(pressure) ? PetMood::scorching : PetMood::content;
    return {std::nullopt, unit, pressure, isElevated(pressure), *lastMood_};
}

void TemperatureMonitor::rediscoverIfDue() {
    const bool isDue =
        consecutiveFailures_ == failuresBeforeBlanking || consecutiveFailures_ % failuresBetweenRediscovery == 0;
    if (!isDue) {
        return;
    }
    log_.diag("sensor", fmt::format("no reading for {} polls; re-resolving sensors", consecutiveFailures_));
    sensor_.refresh();
}

}  // namespace thermopix
