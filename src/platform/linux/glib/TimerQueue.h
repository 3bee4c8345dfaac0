#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace thermopix {

/// Decides when to wake up and which timers run then; knows no clock. A timer runs at the first wake-up at or after
/// its deadline, and the wake-up waits for the end of the shortest leeway, so that deadlines close together share it.
class TimerQueue {
public:
    using Duration = std::chrono::nanoseconds;
    enum class Id : std::uint64_t {};

    /// Fires once, at `deadline`.
    Id addOnce(Duration deadline);

    /// Fires at `first` and every `period` after it, each time up to `leeway` late. A first deadline that has come
    /// already at `now` is served at once.
    Id addRepeating(Duration now, Duration first, Duration period, Duration leeway);

    void remove(Id id);

    /// When to wake up; none without timers.
    [[nodiscard]] std::optional<Duration> nextWakeUp() const;

    /// The due timer with the earliest deadline, oldest first; a one-shot timer leaves the queue, a repeating one
    /// goes on with its first deadline after `now`. None when nothing (more) is due.
    [[nodiscard]] std::optional<Id> takeDue(Duration now);

    /// What a timer ran has ended. One that ran into its own next deadline counts its period from here, so that the
    /// rest of the program has its turn between two long runs.
    void workEnded(Id id, Duration now);

    /// False for a timer that is over.
    [[nodiscard]] bool contains(Id id) const;

private:
    struct Timer {
        Id id;
        Duration deadline;
        /// The end of the leeway.
        Duration latest;
        /// Zero for a one-shot timer.
        Duration period;
        Duration leeway;
    };

    Id add(Timer timer);

    /// A handful, in the order in which they were made.
    std::vector<Timer> timers_;
    std::uint64_t lastId_ = 0;
};

}  // namespace thermopix
