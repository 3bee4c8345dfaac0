#pragma once

#include <gio/gio.h>

#include <functional>
#include <map>
#include <vector>

#include "base/Observers.h"
#include "platform/linux/bus/BusConnection.h"
#include "system/SleepNotifications.h"

namespace thermopix {

/// Sleep and wake from logind's PrepareForSleep, and of the displays from the session's screen savers. Listens to
/// signals only: starts no service, and where a bus or a service is missing its notifications never come.
class DBusSleepNotifications final : public SleepNotifications {
public:
    /// `sessionBus` may be null and outlives the notifications; the system bus is opened at the first `observe`.
    explicit DBusSleepNotifications(GDBusConnection* sessionBus) : sessionBus_(sessionBus) {}

    Subscription observe(SleepNotification notification, std::function<void()> handler) override;

private:
    void listen();

    GDBusConnection* sessionBus_;
    BusConnection systemBus_;
    bool isListening_ = false;
    std::vector<Subscription> signals_;
    std::map<SleepNotification, Observers<>> observers_;
};

}  // namespace thermopix
