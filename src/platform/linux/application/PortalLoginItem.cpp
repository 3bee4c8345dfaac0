#include "platform/linux/application/PortalLoginItem.h"

#include <fmt/core.h>

#include <algorithm>
#include <chrono>

#include "environment/Notices.h"
#include "platform/linux/bus/BusCall.h"
#include "platform/linux/bus/BusNotice.h"
#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

namespace {

constexpr const char* service = "org.freedesktop.portal.Desktop";
constexpr const char* path = "/org/freedesktop/portal/desktop";
constexpr const char* requestInterface = "org.freedesktop.portal.Request";
constexpr const char* noPortal = "No portal of this desktop answers";

// The portal's numbers for the end of a request.
constexpr guint32 done = 0;
constexpr guint32 cancelledByUser = 1;

/// The portal may have to be started first.
constexpr std::chrono::seconds patience(30);

GVariant* questionOf(bool enabled, const std::string& token) {
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&options, "{sv}", "handle_token", g_variant_new_string(token.c_str()));
    g_variant_builder_add(&options, "{sv}", "reason", g_variant_new_string(openAtLoginReason));
    g_variant_builder_add(&options, "{sv}", "autostart", g_variant_new_boolean(enabled ? TRUE : FALSE));
    return g_variant_new("(sa{sv})", "", &options);
}

// Where the answer comes from: the portal makes the path of our name on the bus and the token.
std::string requestPath(GDBusConnection* bus, const std::string& token) {
    std::string sender = g_dbus_connection_get_unique_name(bus) + 1;
    std::replace(sender.begin(), sender.end(), '.', '_');
    return fmt::format("{}/request/{}/{}", path, sender, token);
}

}  // namespace

std::optional<ServiceError> PortalLoginItem::setEnabled(bool enabled) {
    if (enabled == wanted_.value_or(isEnabled_)) {
        return std::nullopt;
    }
    if (sessionBus_ == nullptr) {
        return ServiceError{noPortal};
    }
    wanted_ = enabled;
    const std::string token = fmt::format("thermopix{}", ++questions_);
    response_ =
        observeSignal(sessionBus_, {service, requestPath(sessionBus_, token).c_str(), requestInterface, "Response"},
                      [this](GVariant* response) { hear(response); });
    call_ = callMethod(
        sessionBus_, {service, path, "org.freedesktop.portal.Background", "RequestBackground"},
        questionOf(enabled, token), "(o)",
        [this](GVariant* reply) {
            if (reply == nullptr && wanted_) {
                tell(noPortal);
            }
        },
        patience);
    return std::nullopt;
}

void PortalLoginItem::hear(GVariant* response) {
    if (!wanted_ || g_variant_is_of_type(response, G_VARIANT_TYPE("(ua{sv})")) == FALSE) {
        return;
    }
    guint32 end = done;
    g_variant_get_child(response, 0, "u", &end);
    const GVariantHandle results(g_variant_get_child_value(response, 1));
    gboolean isOn = FALSE;
    if (end == done && g_variant_lookup(results.get(), "autostart", "b", &isOn) != FALSE) {
        isEnabled_ = isOn != FALSE;
        memory_->setData(answerKey, isEnabled_ ? "on" : "off");
    }
    if (isEnabled_ == *wanted_ || end == cancelledByUser) {
        tell(nullptr);
    } else {
        tell("The desktop did not allow it");
    }
}

/// The question is answered; `reason` is why not as it was wanted, if that has to be said.
void PortalLoginItem::tell(const char* reason) {
    wanted_.reset();
    if (reason != nullptr) {
        notices_.show(openAtLoginNotice(reason), {});
    }
    if (onAnswer) {
        onAnswer();
    }
}

}  // namespace thermopix
