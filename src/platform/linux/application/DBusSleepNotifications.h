#pragma once

#include <gio/gio.h>

#include <chrono>
#include <functional>
#include <list>
#include <map>
#include <string>
#include <string_view>

#include "base/Observers.h"
#include "platform/linux/bus/BusConnection.h"
#include "platform/linux/bus/BusNotice.h"
#include "system/MainLoop.h"
#include "system/SleepNotifications.h"

namespace thermopix {

/// Sleep and wake from logind's PrepareForSleep, and of the displays from the session's screen savers. Listens to
/// signals only: starts no service, and where a bus or a service is missing its notifications never come. A sleep ends
/// with the process that announced it at the latest.
class DBusSleepNotifications final : public SleepNotifications {
public:
    /// A machine that runs on for so long after it was about to sleep is awake. The clock stands still in a sleep.
    static constexpr std::chrono::minutes longestFallingAsleep{1};

    /// `sessionBus` may be null: then the displays count for nothing. It and `mainLoop` outlive the notifications; the
    /// system bus is opened at the first `observe`.
    DBusSleepNotifications(GDBusConnection* sessionBus, MainLoop& mainLoop)
        : sessionBus_(sessionBus), mainLoop_(mainLoop) {}

    Subscription observe(SleepNotification notification, std::function<void()> handler) override;

private:
    /// A service that tells of one kind of sleep.
    struct Announcer {
        GDBusConnection* bus;
        const char* name;
        SleepNotification sleep;
        SleepNotification wake;
        /// The process that says that it sleeps; empty while it is awake.
        std::string sender;
        Subscription signal;
        /// Both while it sleeps.
        Subscription owner;
        Subscription patience;
    };

    void listen();
    void add(GDBusConnection* bus, const BusSignal& signal, SleepNotification sleep, SleepNotification wake);
    void heard(Announcer& announcer, bool isAsleep, std::string_view sender);
    void wake(Announcer& announcer);

    GDBusConnection* sessionBus_;
    MainLoop& mainLoop_;
    BusConnection systemBus_;
    bool isListening_ = false;
    std::list<Announcer> announcers_;
    std::map<SleepNotification, Observers<>> observers_;
};

}  // namespace thermopix
