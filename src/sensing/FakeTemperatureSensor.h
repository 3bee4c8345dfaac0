#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "sensing/TemperatureSensing.h"

namespace thermopix {

/// A scripted backend; returns its samples as they are, without a band.
class FakeTemperatureSensor final : public TemperatureSensing {
public:
    FakeTemperatureSensor(std::vector<SensorSample> scripted, bool available);

    /// Twelve readings of a laptop with one named processor, shared by all tests.
    [[nodiscard]] static const std::vector<SensorSample>& appleSiliconFixture();

    using TemperatureSensing::sample;
    [[nodiscard]] bool isAvailable() const override { return available; }
    void sample(SensorNamePredicate wanted, std::vector<SensorSample>& found) override;
    [[nodiscard]] bool isAwaitingAnswer() const override { return awaitsAnswer; }
    void refresh() override;

    bool available;
    bool awaitsAnswer = false;
    std::vector<SensorSample> samples;
    std::int64_t sampleCallCount = 0;
    std::int64_t refreshCallCount = 0;
    /// How many scripted samples the last predicate accepted.
    std::int64_t lastPredicateMatchCount = 0;
    /// Called at the end of every `refresh()`; it may change the samples and the availability.
    std::function<void(FakeTemperatureSensor&)> onRefresh;
};

}  // namespace thermopix
