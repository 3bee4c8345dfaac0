#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include "base/Subscription.h"
#include "platform/linux/sensors/SensorReader.h"
#include "system/HIDSymbols.h"
#include "system/MonotonicClock.h"
#include "system/WakeUp.h"

namespace thermopix {

/// How this run reads its sensors: in place, or, once it polls on a thread that must not wait, beside the polls where
/// they are slow. Shared by all paced channels; main thread.
class SensorPolling {
public:
    using Duration = std::chrono::nanoseconds;

    /// How long first reads are waited for, all together, each time that the sensors are discovered: as long as one
    /// quick read may take.
    static constexpr Duration patienceWithNew = std::chrono::milliseconds(20);

    static constexpr Duration betweenDiscoveries = std::chrono::seconds(10);

    /// Reads in place; `clock`, which outlives the polling, is used once polls come.
    explicit SensorPolling(const MonotonicClock& clock, WakeUpMaker makeWakeUp = {});
    SensorPolling(const SensorPolling&) = delete;
    SensorPolling& operator=(const SensorPolling&) = delete;

    /// From now on polls come, while the subscription lasts.
    [[nodiscard]] Subscription poll(const SensorPolls& polls);

    /// Sensors have been discovered, which answer at once as a rule.
    void noteDiscovery();
    /// Counts the discoveries.
    [[nodiscard]] std::uint64_t discoveries() const { return discoveries_; }

    /// A poll was left without this answer, which is still to come.
    void awaitAnswer(const SensorReader::Request& request);

    /// What a poll was left without has come.
    void noteLate();

    /// Sensors have come or gone.
    void noteChange();

    /// A sensor is there no more. Told once for each discovery, and not within ten seconds of one: a device that fails
    /// again and again is not looked for all the time.
    void noteGone();

    /// The patience that is left, and its spending.
    [[nodiscard]] Duration patience() const { return patience_; }
    void spendPatience(Duration spent) { patience_ = spent < patience_ ? patience_ - spent : Duration::zero(); }

    /// Null while sensors are read in place.
    [[nodiscard]] SensorReader* reader() { return reader_.get(); }
    [[nodiscard]] Duration interval() const { return interval_; }
    [[nodiscard]] Duration now() const { return clock_.now(); }

private:
    const MonotonicClock& clock_;
    WakeUpMaker makeWakeUp_;
    std::unique_ptr<SensorReader> reader_;
    /// Held by their subscription.
    std::weak_ptr<const SensorPolls> polls_;
    WakeUp late_;
    Duration interval_{};
    Duration patience_ = patienceWithNew;
    std::uint64_t discoveries_ = 0;
    Duration discoveredAt_{};
    bool hasToldOfGone_ = false;
};

/// For those who never poll.
[[nodiscard]] SensorPolling& readingInPlace();

}  // namespace thermopix
