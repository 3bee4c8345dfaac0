#include "platform/linux/updates/DesktopNotices.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "environment/AppInfo.h"
#include "platform/linux/bus/BusCall.h"
#include "platform/linux/bus/BusNotice.h"
#include "updates/PageAddress.h"

namespace thermopix {

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";
/// The button; a click on the notification itself is the key that the notification standard names.
constexpr const char* buttonKey = "show-release";
constexpr const char* clickKey = "default";

enum Urgency : guint8 { normal = 1, critical = 2 };

bool holds(GVariant* list, const char* wanted) {
    const GVariantHandle texts(g_variant_get_child_value(list, 0));
    const auto count = g_variant_n_children(texts.get());
    for (gsize i = 0; i < count; ++i) {
        const GVariantHandle text(g_variant_get_child_value(texts.get(), i));
        if (g_str_equal(g_variant_get_string(text.get(), nullptr), wanted) != FALSE) {
            return true;
        }
    }
    return false;
}

/// Where the service shows no buttons, the page's address is part of the text.
std::string bodyOf(const UpdateNotice& notice, GVariant* capabilities) {
    std::string body = notice.body;
    if (notice.button && !holds(capabilities, "actions")) {
        body += "\n" + notice.button->page;
    }
    if (!holds(capabilities, "body-markup")) {
        return body;
    }
    const GStringHandle escaped(g_markup_escape_text(body.data(), static_cast<gssize>(body.size())));
    return escaped.get();
}

GVariant* parametersOf(const UpdateNotice& notice, GVariant* capabilities, std::uint32_t replaced) {
    const std::string name(AppInfo::name);
    const std::string identifier(AppInfo::identifier);
    GVariantBuilder actions;
    g_variant_builder_init(&actions, G_VARIANT_TYPE("as"));
    if (notice.button && holds(capabilities, "actions")) {
        for (const char* key : {clickKey, buttonKey}) {
            g_variant_builder_add(&actions, "s", key);
            g_variant_builder_add(&actions, "s", notice.button->label.c_str());
        }
    }
    GVariantBuilder hints;
    g_variant_builder_init(&hints, G_VARIANT_TYPE("a{sv}"));
    g_variant_builder_add(&hints, "{sv}", "desktop-entry", g_variant_new_string(identifier.c_str()));
    g_variant_builder_add(&hints, "{sv}", "urgency", g_variant_new_byte(notice.isCritical ? critical : normal));
    g_variant_builder_add(&hints, "{sv}", "transient", g_variant_new_boolean(notice.isNews ? FALSE : TRUE));
    constexpr gint32 asTheServiceLikes = -1;
    return g_variant_new("(susssasa{sv}i)", name.c_str(), replaced, identifier.c_str(), notice.title.c_str(),
                         bodyOf(notice, capabilities).c_str(), &actions, &hints, asTheServiceLikes);
}

}  // namespace

DesktopNotices::DesktopNotices(GDBusConnection* connection, Opener opener)
    : connection_(connection), opener_(std::move(opener)) {}

void DesktopNotices::show(const UpdateNotice& notice, std::function<void(bool)> shown) {
    if (connection_ == nullptr) {
        shown(false);
        return;
    }
    call_ = callMethod(connection_, {service, path, service, "GetCapabilities"}, nullptr, "(as)",
                       [this, notice, shown = std::move(shown)](GVariant* capabilities) {
                           if (capabilities == nullptr) {
                               shown(false);
                               return;
                           }
                           notify(notice, capabilities, shown);
                       });
}

void DesktopNotices::notify(const UpdateNotice& notice, GVariant* capabilities, std::function<void(bool)> shown) {
    call_ = callMethod(connection_, {service, path, service, "Notify"}, parametersOf(notice, capabilities, identifier_),
                       "(u)", [this, button = notice.button, shown = std::move(shown)](GVariant* reply) {
                           clicks_.cancel();
                           closings_.cancel();
                           tokens_.cancel();
                           identifier_ = 0;
                           if (reply != nullptr) {
                               g_variant_get(reply, "(u)", &identifier_);
                           }
                           if (reply != nullptr && button) {
                               listen(button->page);
                           }
                           shown(reply != nullptr);
                       });
}

void DesktopNotices::listen(const std::string& page) {
    const auto isOurs = [this](GVariant* parameters, const char* type) {
        std::uint32_t identifier = 0;
        if (g_variant_is_of_type(parameters, G_VARIANT_TYPE(type)) != FALSE) {
            g_variant_get_child(parameters, 0, "u", &identifier);
        }
        return identifier != 0 && identifier == identifier_;
    };
    const auto textOf = [](GVariant* parameters) {
        const char* text = nullptr;
        g_variant_get_child(parameters, 1, "&s", &text);
        return std::string(text);
    };
    activationToken_.clear();
    tokens_ = observeSignal(connection_, {service, path, service, "ActivationToken"},
                            [this, isOurs, textOf](GVariant* parameters) {
                                if (isOurs(parameters, "(us)")) {
                                    activationToken_ = textOf(parameters);
                                }
                            });
    clicks_ = observeSignal(connection_, {service, path, service, "ActionInvoked"},
                            [this, isOurs, textOf, page](GVariant* parameters) {
                                if (!isOurs(parameters, "(us)")) {
                                    return;
                                }
                                const auto key = textOf(parameters);
                                if (isPageAddress(page) && (key == buttonKey || key == clickKey)) {
                                    opener_(page, std::exchange(activationToken_, {}));
                                }
                            });
    closings_ = observeSignal(connection_, {service, path, service, "NotificationClosed"},
                              [this, isOurs](GVariant* parameters) {
                                  if (isOurs(parameters, "(uu)")) {
                                      identifier_ = 0;
                                      tokens_.cancel();
                                      clicks_.cancel();
                                      closings_.cancel();
                                  }
                              });
}

}  // namespace thermopix
