#include "platform/linux/windows/DesktopNotification.h"

#include "environment/AppInfo.h"
#include "platform/linux/bus/BusCall.h"

namespace thermopix {

namespace {

constexpr std::int32_t serverDecidesWhenToHide = -1;

}  // namespace

void DesktopNotification::show(const std::string& summary, const std::string& body) {
    if (sessionBus_ == nullptr) {
        return;
    }
    const GStringHandle escaped(g_markup_escape_text(body.c_str(), -1));
    call_ = callMethod(
        sessionBus_,
        {"org.freedesktop.Notifications", "/org/freedesktop/Notifications", "org.freedesktop.Notifications", "Notify"},
        g_variant_new("(susssasa{sv}i)", std::string(AppInfo::name).c_str(), shown_,
                      std::string(AppInfo::identifier).c_str(), summary.c_str(), escaped.get(), nullptr, nullptr,
                      serverDecidesWhenToHide),
        "(u)", [this](GVariant* reply) {
            if (reply != nullptr) {
                g_variant_get(reply, "(u)", &shown_);
            }
        });
}

}  // namespace thermopix
