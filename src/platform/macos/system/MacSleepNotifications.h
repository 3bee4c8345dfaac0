#pragma once

#include "system/SleepNotifications.h"

namespace thermopix {

/// What the workspace tells of sleep and wake.
class MacSleepNotifications final : public SleepNotifications {
public:
    Subscription observe(SleepNotification notification, std::function<void()> handler) override;
};

}  // namespace thermopix
