#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "platform/linux/sensors/SensorChannel.h"
#include "system/MonotonicClock.h"

namespace thermopix {

/// Reads channels on a thread of its own, in the order of asking. The thread starts with the first request and ends
/// with the last; while it is in a long read, requests that wait get another thread, four in all but for those that are
/// stuck for ten seconds. Main thread, apart from what it says of other threads; it ends at once, whatever is being
/// read.
class SensorReader {
public:
    using Duration = std::chrono::nanoseconds;
    struct Answer {
        std::optional<double> celsius;
        /// How long the channel took, without the time in the queue.
        Duration took;
        /// When the read ended, on the reader's clock.
        Duration at;
    };

    /// A channel that is read here while it is asked for, and by nobody else meanwhile.
    class Request;

    /// Shorter than the patience with first reads, so that the second sensor of a machine does not wait for a hung
    /// first.
    static constexpr Duration longRead = std::chrono::milliseconds(10);
    static constexpr Duration stuckAfter = std::chrono::seconds(10);
    static constexpr int mostThreads = 4;

    /// `clock` outlives the reader and is used on its threads too.
    explicit SensorReader(const MonotonicClock& clock);
    ~SensorReader();
    SensorReader(const SensorReader&) = delete;
    SensorReader& operator=(const SensorReader&) = delete;

    /// Has the channel read, and holds it until it has been.
    [[nodiscard]] std::shared_ptr<Request> ask(std::shared_ptr<SensorChannel> channel);

    /// The answer, waited for at most so long; none while the read is under way.
    [[nodiscard]] std::optional<Answer> collect(const Request& request, Duration patience);

    /// Calls `heard` once, after the next answer on a thread of the reader, or now where this request has its answer
    /// already; in place of what was to be called before.
    void notify(const Request& request, std::function<void()> heard);

private:
    struct State;

    std::shared_ptr<State> state_;
};

}  // namespace thermopix
