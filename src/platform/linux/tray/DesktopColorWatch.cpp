#include "platform/linux/tray/DesktopColorWatch.h"

#include <string_view>

#include "platform/linux/bus/BusCall.h"
#include "platform/linux/bus/BusNotice.h"

namespace thermopix {
namespace {

/// The desktop portal's settings.
constexpr const char* portalName = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* portalInterface = "org.freedesktop.portal.Settings";
constexpr const char* appearance = "org.freedesktop.appearance";
constexpr const char* colorScheme = "color-scheme";

/// XFCE's settings.
constexpr const char* xfconfName = "org.xfce.Xfconf";
constexpr const char* xfconfPath = "/org/xfce/Xfconf";
constexpr const char* xfconfInterface = "org.xfce.Xfconf";
constexpr const char* panelChannel = "xfce4-panel";
constexpr const char* darkMode = "/panels/dark-mode";

/// The last of the values that a tuple holds, out of all its wrappings.
GVariantHandle lastValue(GVariant* tuple) {
    const gsize count = tuple == nullptr ? 0 : g_variant_n_children(tuple);
    GVariantHandle value(count == 0 ? nullptr : g_variant_get_child_value(tuple, count - 1));
    while (value != nullptr && g_variant_is_of_type(value.get(), G_VARIANT_TYPE_VARIANT) != FALSE) {
        value.reset(g_variant_get_variant(value.get()));
    }
    return value;
}

/// Whether the parameters of a signal name this setting and its value.
bool names(GVariant* parameters, std::string_view place, std::string_view setting) {
    if (g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)")) == FALSE) {
        return false;
    }
    const char* first = nullptr;
    const char* second = nullptr;
    g_variant_get(parameters, "(&s&sv)", &first, &second, nullptr);
    return place == first && setting == second;
}

}  // namespace

void DesktopColorWatch::follow(TrayInkRule rule) {
    if (rule == rule_) {
        return;
    }
    rule_ = rule;
    subscriptions_.clear();
    if (rule == TrayInkRule::xfcePanel) {
        followXfcePanel();
    }
    if (rule != TrayInkRule::light) {
        followColorScheme();
    }
}

void DesktopColorWatch::followColorScheme() {
    subscriptions_.push_back(observeSignal(connection_,
                                           {portalName, portalPath, portalInterface, "SettingChanged", appearance},
                                           [this](GVariant* parameters) {
                                               if (names(parameters, appearance, colorScheme)) {
                                                   setColorScheme(lastValue(parameters).get());
                                               }
                                           }));
    subscriptions_.push_back(callMethod(connection_, {portalName, portalPath, portalInterface, "Read"},
                                        g_variant_new("(ss)", appearance, colorScheme), "(v)",
                                        [this](GVariant* reply) { setColorScheme(lastValue(reply).get()); }));
}

void DesktopColorWatch::followXfcePanel() {
    subscriptions_.push_back(observeSignal(connection_,
                                           {xfconfName, xfconfPath, xfconfInterface, "PropertyChanged", panelChannel},
                                           [this](GVariant* parameters) {
                                               if (names(parameters, panelChannel, darkMode)) {
                                                   setXfcePanel(lastValue(parameters).get());
                                               }
                                           }));
    subscriptions_.push_back(callMethod(connection_, {xfconfName, xfconfPath, xfconfInterface, "GetProperty"},
                                        g_variant_new("(ss)", panelChannel, darkMode), "(v)",
                                        [this](GVariant* reply) { setXfcePanel(lastValue(reply).get()); }));
}

void DesktopColorWatch::setColorScheme(GVariant* value) {
    DesktopColors colors = colors_.value();
    colors.scheme = ColorScheme::noPreference;
    if (value != nullptr && g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32) != FALSE) {
        const guint32 number = g_variant_get_uint32(value);
        colors.scheme = number == 1 ? ColorScheme::dark : number == 2 ? ColorScheme::light : ColorScheme::noPreference;
    }
    if (colors != colors_.value()) {
        colors_.send(colors);
    }
}

void DesktopColorWatch::setXfcePanel(GVariant* value) {
    DesktopColors colors = colors_.value();
    colors.hasDarkXfcePanel.reset();
    if (value != nullptr && g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) != FALSE) {
        colors.hasDarkXfcePanel = g_variant_get_boolean(value) != FALSE;
    }
    if (colors != colors_.value()) {
        colors_.send(colors);
    }
}

}  // namespace thermopix
