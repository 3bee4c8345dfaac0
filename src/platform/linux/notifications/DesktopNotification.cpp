#include "platform/linux/notifications/DesktopNotification.h"

#include <memory>
#include <utility>

#include "base/Unicode.h"
#include "environment/AppInfo.h"
#include "platform/linux/bus/BusCall.h"
#include "platform/linux/bus/BusNotice.h"
#include "platform/linux/notifications/AddressOpener.h"

namespace thermopix {

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";
/// The button; a click on the notification itself is the key that the notification standard names.
constexpr const char* buttonKey = "open";
constexpr const char* clickKey = "default";

bool holds(GVariant* reply, const char* wanted) {
    const GVariantHandle list(g_variant_get_child_value(reply, 0));
    const std::unique_ptr<const gchar*, GLibRelease<&g_free>> texts(g_variant_get_strv(list.get(), nullptr));
    return g_strv_contains(texts.get(), wanted) != FALSE;
}

std::string escaped(const std::string& text) {
    const GStringHandle handle(g_markup_escape_text(text.c_str(), -1));
    return handle.get();
}

GVariant* parametersOf(const UserNotice& notice, std::uint32_t replaced) {
    const std::string name(AppInfo::name);
    const std::string identifier(AppInfo::identifier);
    GVariantBuilder actions;
    g_variant_builder_init(&actions, G_VARIANT_TYPE("as"));
    if (notice.button) {
        for (const char* key : {clickKey, buttonKey}) {
            g_variant_builder_add(&actions, "s", key);
            g_variant_builder_add(&actions, "s", notice.button->label.c_str());
        }
    }
    GVariantBuilder hints;
    g_variant_builder_init(&hints, G_VARIANT_TYPE("a{sv}"));
    g_variant_builder_add(&hints, "{sv}", "desktop-entry", g_variant_new_string(identifier.c_str()));
    g_variant_builder_add(&hints, "{sv}", "transient", g_variant_new_boolean(notice.isAnswer ? TRUE : FALSE));
    constexpr gint32 asTheServiceLikes = -1;
    return g_variant_new("(susssasa{sv}i)", name.c_str(), replaced, identifier.c_str(), notice.title.c_str(),
                         notice.body.c_str(), &actions, &hints, asTheServiceLikes);
}

/// The number of the notification that a signal is about; 0 for a signal that is not of that type.
std::uint32_t subjectOf(GVariant* parameters, const char* type) {
    std::uint32_t identifier = 0;
    if (g_variant_is_of_type(parameters, G_VARIANT_TYPE(type)) != FALSE) {
        g_variant_get_child(parameters, 0, "u", &identifier);
    }
    return identifier;
}

std::string textOf(GVariant* parameters) {
    const char* text = nullptr;
    g_variant_get_child(parameters, 1, "&s", &text);
    return text;
}

}  // namespace

void DesktopNotification::show(const UserNotice& notice, Shown shown) {
    if (sessionBus_ == nullptr) {
        tell(shown, false);
        return;
    }
    step_ = callMethod(sessionBus_, {service, path, service, "GetCapabilities"}, nullptr, "(as)",
                       [this, notice, shown = std::move(shown)](GVariant* capabilities) {
                           if (capabilities == nullptr) {
                               tell(shown, false);
                           } else {
                               adapt(notice, capabilities, shown);
                           }
                       });
}

void DesktopNotification::adapt(UserNotice notice, GVariant* capabilities, Shown shown) {
    notice.title = repairedUtf8(notice.title);
    notice.body = repairedUtf8(notice.body);
    if (holds(capabilities, "body-markup")) {
        notice.body = escaped(notice.body);
    }
    if (!holds(capabilities, "actions")) {
        notice.button.reset();
    }
    if (!notice.button) {
        notify(notice, std::move(shown));
        return;
    }
    step_ = findOpener(notice.button->address, [this, notice, shown = std::move(shown)](bool hasOpener) mutable {
        if (!hasOpener) {
            notice.button.reset();
        }
        notify(notice, std::move(shown));
    });
}

void DesktopNotification::notify(const UserNotice& notice, Shown shown) {
    step_ = callMethod(sessionBus_, {service, path, service, "Notify"}, parametersOf(notice, identifier_), "(u)",
                       [this, button = notice.button, shown = std::move(shown)](GVariant* reply) {
                           forget();
                           if (reply != nullptr) {
                               g_variant_get(reply, "(u)", &identifier_);
                               if (button) {
                                   listen(button->address);
                               }
                           }
                           tell(shown, reply != nullptr);
                       });
}

void DesktopNotification::listen(const std::string& address) {
    tokens_ = observeSignal(sessionBus_, {service, path, service, "ActivationToken"}, [this](GVariant* parameters) {
        if (isOurs(subjectOf(parameters, "(us)"))) {
            activationToken_ = textOf(parameters);
        }
    });
    clicks_ =
        observeSignal(sessionBus_, {service, path, service, "ActionInvoked"}, [this, address](GVariant* parameters) {
            if (!isOurs(subjectOf(parameters, "(us)"))) {
                return;
            }
            if (const auto key = textOf(parameters); key == buttonKey || key == clickKey) {
                openAddress(address, std::exchange(activationToken_, {}), log_);
            }
        });
    closings_ =
        observeSignal(sessionBus_, {service, path, service, "NotificationClosed"}, [this](GVariant* parameters) {
            if (isOurs(subjectOf(parameters, "(uu)"))) {
                forget();
            }
        });
}

void DesktopNotification::forget() {
    identifier_ = 0;
    activationToken_.clear();
    tokens_.cancel();
    clicks_.cancel();
    closings_.cancel();
}

void DesktopNotification::tell(const Shown& shown, bool wasShown) {
    if (shown) {
        shown(wasShown);
    }
}

}  // namespace thermopix
