#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "system/SleepNotifications.h"

namespace thermopix {

/// Delivers the notifications that a test sends; records what was observed, in order.
class ManualSleepNotifications final : public SleepNotifications {
public:
    Subscription observe(SleepNotification notification, std::function<void()> handler) override {
        observed.push_back(notification);
        auto shared = std::make_shared<std::function<void()>>(std::move(handler));
        handlers_[notification].push_back(shared);
        return Subscription([shared]() mutable { shared.reset(); });
    }

    void send(SleepNotification notification) {
        const auto told = handlers_[notification];
        for (const auto& entry : told) {
            if (const auto handler = entry.lock()) {
                (*handler)();
            }
        }
    }

    [[nodiscard]] std::size_t activeCount() const {
        std::size_t count = 0;
        for (const auto& [notification, entries] : handlers_) {
            for (const auto& entry : entries) {
                count += entry.expired() ? 0U : 1U;
            }
        }
        return count;
    }

    std::vector<SleepNotification> observed;

private:
    std::map<SleepNotification, std::vector<std::weak_ptr<std::function<void()>>>> handlers_;
};

}  // namespace thermopix
