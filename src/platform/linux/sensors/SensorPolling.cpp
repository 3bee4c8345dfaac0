#include "platform/linux/sensors/SensorPolling.h"

#include <utility>

namespace thermopix {

SensorPolling::SensorPolling(const MonotonicClock& clock, WakeUpMaker makeWakeUp)
    : clock_(clock), makeWakeUp_(std::move(makeWakeUp)) {}

Subscription SensorPolling::poll(const SensorPolls& polls) {
    interval_ = polls.interval;
    if (!reader_) {
        reader_ = std::make_unique<SensorReader>(clock_);
    }
    auto held = std::make_shared<const SensorPolls>(polls);
    polls_ = held;
    if (makeWakeUp_) {
        late_ = makeWakeUp_([polls = polls_] {
            if (const auto current = polls.lock()) {
                current->onLate();
            }
        });
    }
    return Subscription([held = std::move(held)]() mutable { held.reset(); });
}

void SensorPolling::noteDiscovery() {
    ++discoveries_;
    patience_ = patienceWithNew;
    discoveredAt_ = now();
    hasToldOfGone_ = false;
}

void SensorPolling::awaitAnswer(const SensorReader::Request& request) {
    if (late_.raise) {
        reader_->notify(request, late_.raise);
    }
}

void SensorPolling::noteLate() {
    if (const auto polls = polls_.lock()) {
        polls->onLate();
    }
}

void SensorPolling::noteChange() {
    if (const auto polls = polls_.lock()) {
        polls->onChange();
    }
}

void SensorPolling::noteGone() {
    if (!hasToldOfGone_ && now() - discoveredAt_ >= betweenDiscoveries) {
        hasToldOfGone_ = true;
        noteChange();
    }
}

SensorPolling& readingInPlace() {
    struct NoClock final : MonotonicClock {
        [[nodiscard]] std::chrono::nanoseconds now() const override { return {}; }
    };
    static const NoClock clock;
    static SensorPolling polling(clock);
    return polling;
}

}  // namespace thermopix
