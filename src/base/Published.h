#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "base/Subscription.h"

namespace thermopix {

/// Announces values to subscribers, in the order in which they subscribed. A subscriber gets the newest value at
/// once and every later one until its subscription ends. Subscribing and unsubscribing inside a callback are safe.
/// One thread only; outlives its own callbacks.
template <typename Value>
class Published {
public:
    using Handler = std::function<void(const Value&)>;

    explicit Published(Value initial) : current_(std::move(initial)) {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    [[nodiscard]] const Value& value() const { return current_; }

    /// Tells every subscriber; `value()` answers `next` only afterwards, so a subscriber can still see the value
    /// that is being replaced. A callback that sends again is overruled by the send that called it.
    void send(Value next) {
        std::erase_if(handlers_, [](const auto& entry) { return entry.expired(); });
        const auto told = handlers_;
        for (const auto& entry : told) {
            if (const auto handler = entry.lock()) {
                (*handler)(next);
            }
        }
        current_ = std::move(next);
    }

    /// Calls `handler` with the current value before it returns.
    Subscription subscribe(Handler handler) {
        auto shared = std::make_shared<Handler>(std::move(handler));
        handlers_.push_back(shared);
        (*shared)(current_);
        return Subscription([shared]() mutable { shared.reset(); });
    }

private:
    Value current_;
    std::vector<std::weak_ptr<Handler>> handlers_;
};

}  // namespace thermopix
