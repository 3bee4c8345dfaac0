#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "base/Subscription.h"

namespace thermopix {

/// Handlers that are told in the order in which they were added; adding and ending inside a call are safe. One thread.
template <typename... Values>
class HandlerList {
public:
    using Handler = std::function<void(Values...)>;

    [[nodiscard]] Subscription add(Handler handler) {
        auto shared = std::make_shared<const Handler>(std::move(handler));
        handlers_.push_back(shared);
        return Subscription([shared]() mutable { shared.reset(); });
    }

    void tell(const Values&... values) {
        std::erase_if(handlers_, [](const auto& entry) { return entry.expired(); });
        const auto told = handlers_;
        for (const auto& entry : told) {
            if (const auto handler = entry.lock()) {
                (*handler)(values...);
            }
        }
    }

private:
    std::vector<std::weak_ptr<const Handler>> handlers_;
};

}  // namespace thermopix
