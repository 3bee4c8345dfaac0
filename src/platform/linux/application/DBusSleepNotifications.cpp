#include "platform/linux/application/DBusSleepNotifications.h"

#include <array>
#include <utility>

namespace thermopix {

namespace {

// The interfaces under which desktops announce that their displays went blank; each is named like its service.
constexpr std::array screenSavers{"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver", "org.cinnamon.ScreenSaver",
                                  "org.mate.ScreenSaver", "org.xfce.ScreenSaver"};

}  // namespace

Subscription DBusSleepNotifications::observe(SleepNotification notification, std::function<void()> handler) {
    listen();
    return observers_[notification].add(std::move(handler));
}

void DBusSleepNotifications::listen() {
    if (std::exchange(isListening_, true)) {
        return;
    }
    systemBus_ = openSystemBus();
    if (systemBus_) {
        add(systemBus_.get(),
            {"org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep"},
            SleepNotification::willSleep, SleepNotification::didWake);
    }
    if (sessionBus_ != nullptr) {
        for (const char* name : screenSavers) {
            add(sessionBus_, {name, nullptr, name, "ActiveChanged"}, SleepNotification::screensDidSleep,
                SleepNotification::screensDidWake);
        }
    }
}

void DBusSleepNotifications::add(GDBusConnection* bus, const BusSignal& signal, SleepNotification sleep,
                                 SleepNotification wake) {
    auto& announcer = announcers_.emplace_back(Announcer{bus, signal.busName, sleep, wake, {}, {}, {}, {}});
    // One boolean says which way it goes: true before sleep or when the displays blank, false afterwards.
    announcer.signal = observeSignal(bus, signal, [this, &announcer](GVariant* parameters, std::string_view sender) {
        if (g_variant_is_of_type(parameters, G_VARIANT_TYPE("(b)")) != FALSE) {
            gboolean isAsleep = FALSE;
            g_variant_get(parameters, "(b)", &isAsleep);
            heard(announcer, isAsleep != FALSE, sender);
        }
    });
}

void DBusSleepNotifications::heard(Announcer& announcer, bool isAsleep, std::string_view sender) {
    if (!isAsleep) {
        this->wake(announcer);
        return;
    }
    announcer.sender = sender;
    announcer.owner = observeNameOwner(announcer.bus, announcer.name, [this, &announcer](std::string_view owner) {
        if (owner != announcer.sender) {
            this->wake(announcer);
        }
    });
    if (announcer.sleep == SleepNotification::willSleep) {
        announcer.patience = mainLoop_.oneShot(longestFallingAsleep, [this, &announcer] { this->wake(announcer); });
    }
    observers_[announcer.sleep].tell();
}

void DBusSleepNotifications::wake(Announcer& announcer) {
    announcer.sender.clear();
    announcer.owner.cancel();
    announcer.patience.cancel();
    observers_[announcer.wake].tell();
}

}  // namespace thermopix
