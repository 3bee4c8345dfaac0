#include "platform/linux/application/DBusSleepNotifications.h"

#include <cstddef>
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
    auto shared = std::make_shared<Handler>(std::move(handler));
    auto& entries = handlers_[static_cast<std::size_t>(notification)];
    std::erase_if(entries, [](const auto& entry) { return entry.expired(); });
    entries.push_back(shared);
    return Subscription([shared]() mutable { shared.reset(); });
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
                notify(value != FALSE ? whenTrue : whenFalse);
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

void DBusSleepNotifications::notify(SleepNotification notification) {
    const auto told = handlers_[static_cast<std::size_t>(notification)];
    for (const auto& entry : told) {
        if (const auto handler = entry.lock()) {
            (*handler)();
        }
    }
}

}  // namespace thermopix
