#pragma once

#include <chrono>
#include <optional>

namespace thermopix {

/// The reading of a sensor that is read beside the polls, one read at a time: what a poll may show of the last answer,
/// and whether it should wait for the next. All times are of one monotonic clock.
class LateReading {
public:
    using Time = std::chrono::nanoseconds;

    /// A sensor that has been read for this long counts as absent.
    static constexpr Time longestWait = std::chrono::seconds(10);

    /// A read was asked for; it is under way until it is answered.
    void ask(Time now) { askedAt_ = now; }

    /// The read has ended, with a temperature in degrees Celsius or without one.
    void answer(Time now, std::optional<double> celsius) {
        round_ = now - askedAt_.value_or(now);
        askedAt_.reset();
        answeredAt_ = now;
        celsius_ = celsius;
    }

    [[nodiscard]] bool isUnderWay() const { return askedAt_.has_value(); }

    /// The last answer counts for three intervals between polls and the time that its own read took.
    [[nodiscard]] bool isFresh(Time now, Time interval) const {
        return answeredAt_ && now - *answeredAt_ <= 3 * interval + round_;
    }

    /// The last temperature while that is fresh.
    [[nodiscard]] std::optional<double> celsius(Time now, Time interval) const {
        return isFresh(now, interval) ? celsius_ : std::nullopt;
    }

    /// Whether there is no fresh answer yet, but one may still come from the read under way.
    [[nodiscard]] bool isAwaited(Time now, Time interval) const {
        return askedAt_ && now - *askedAt_ < longestWait && !isFresh(now, interval);
    }

private:
    std::optional<Time> askedAt_;
    std::optional<Time> answeredAt_;
    std::optional<double> celsius_;
    /// From asking to answering, the last time.
    Time round_{};
};

}  // namespace thermopix
