#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "base/Subscription.h"

namespace thermopix {

/// Handlers of something that happens, told in the order in which they were added. Adding and dropping handlers, and
/// the end of this object, are safe inside a handler. One thread only.
template <typename... Values>
class Observers {
public:
    using Handler = std::function<void(const Values&...)>;

    Subscription add(Handler handler) {
        std::erase_if(handlers_, [](const auto& entry) { return entry.expired(); });
        auto shared = std::make_shared<Handler>(std::move(handler));
        handlers_.push_back(shared);
        return Subscription([shared]() mutable { shared.reset(); });
    }

    void tell(const Values&... values) const {
        const auto told = handlers_;
        for (const auto& entry : told) {
            if (const auto handler = entry.lock()) {
                (*handler)(values...);
            }
        }
    }

    [[nodiscard]] std::size_t count() const {
        return static_cast<std::size_t>(
            std::count_if(handlers_.begin(), handlers_.end(), [](const auto& entry) { return !entry.expired(); }));
    }

private:
    std::vector<std::weak_ptr<Handler>> handlers_;
};

}  // namespace thermopix
