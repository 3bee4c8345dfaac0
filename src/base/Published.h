#pragma once

#include <memory>
#include <utility>

#include "base/Observers.h"

namespace thermopix {

/// Announces values to subscribers, in the order in which they subscribed. A subscriber gets the newest value at
/// once and every later one until its subscription ends. Subscribing and unsubscribing inside a callback are safe.
/// One thread only; outlives its own callbacks.
template <typename Value>
class Published {
public:
    using Handler = typename Observers<Value>::Handler;

    explicit Published(Value initial) : current_(std::move(initial)) {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    [[nodiscard]] const Value& value() const { return current_; }

    /// Tells every subscriber; `value()` answers `next` only afterwards, so a subscriber can still see the value
    /// that is being replaced. A callback that sends again is overruled by the send that called it.
    void send(Value next) {
        observers_.tell(next);
        current_ = std::move(next);
    }

    /// Calls `handler` with the current value before it returns.
    Subscription subscribe(Handler handler) {
        const auto shared = std::make_shared<Handler>(std::move(handler));
        auto subscription = observers_.add([shared](const Value& value) { (*shared)(value); });
        (*shared)(current_);
        return subscription;
    }

private:
    Value current_;
    Observers<Value> observers_;
};

}  // namespace thermopix
