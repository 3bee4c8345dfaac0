#include "platform/linux/application/DBusSleepNotifications.h"

#include <array>
#include <utility>

#include "platform/linux/bus/BusNotice.h"

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
    // One boolean says which way it goes: true before sleep or when the displays blank, false afterwards.
    const auto announces = [this](SleepNotification whenTrue, SleepNotification whenFalse) {
        return [this, whenTrue, whenFalse](GVariant* parameters) {
            if (g_variant_is_of_type(parameters, G_VARIANT_TYPE("(b)")) != FALSE) {
                gboolean value = FALSE;
                g_variant_get(parameters, "(b)", &value);
                observers_[value != FALSE ? whenTrue : whenFalse].tell();
            }
        };
    };
    systemBus_ = openSystemBus();
    if (systemBus_) {
        signals_.push_back(observeSignal(
            systemBus_.get(),
            {"org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager", "PrepareForSleep"},
            announces(SleepNotification::willSleep, SleepNotification::didWake)));
    }
    if (sessionBus_ != nullptr) {
        for (const char* name : screenSavers) {
            signals_.push_back(
                observeSignal(sessionBus_, {name, nullptr, name, "ActiveChanged"},
                              announces(SleepNotification::screensDidSleep, SleepNotification::screensDidWake)));
        }
    }
}

}  // namespace thermopix
