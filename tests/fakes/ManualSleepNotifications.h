#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "base/Observers.h"
#include "system/SleepNotifications.h"

namespace thermopix {

/// Delivers the notifications that a test sends; records what was observed, in order.
class ManualSleepNotifications final : public SleepNotifications {
public:
    Subscription observe(SleepNotification notification, std::function<void()> handler) override {
        observed.push_back(notification);
        return observers_[notification].add(std::move(handler));
    }

    void send(SleepNotification notification) { observers_[notification].tell(); }

    [[nodiscard]] std::size_t activeCount() const {
        std::size_t count = 0;
        for (const auto& [notification, observers] : observers_) {
            count += observers.count();
        }
        return count;
    }

    std::vector<SleepNotification> observed;

private:
    std::map<SleepNotification, Observers<>> observers_;
};

}  // namespace thermopix
