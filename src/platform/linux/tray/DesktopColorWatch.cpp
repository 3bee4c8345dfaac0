#include "platform/linux/tray/DesktopColorWatch.h"

#include <functional>
#include <string_view>

#include "platform/linux/bus/BusCall.h"
#include "platform/linux/bus/BusNotice.h"

namespace thermopix {
namespace {

/// A setting of the desktop: where it is read, and the signal that tells its changes.
struct Setting {
    const char* busName;
    const char* objectPath;
    const char* interfaceName;
    const char* getter;
    const char* signal;
    const char* group;
    const char* name;
};

constexpr Setting colorScheme{"org.freedesktop.portal.Desktop",
                              "/org/freedesktop/portal/desktop",
                              "org.freedesktop.portal.Settings",
                              "Read",
                              "SettingChanged",
                              "org.freedesktop.appearance",
                              "color-scheme"};
constexpr Setting darkXfcePanel{"org.xfce.Xfconf", "/org/xfce/Xfconf", "org.xfce.Xfconf",  "GetProperty",
                                "PropertyChanged", "xfce4-panel",      "/panels/dark-mode"};

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
bool names(GVariant* parameters, const Setting& setting) {
    if (g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)")) == FALSE) {
        return false;
    }
    const char* group = nullptr;
    const char* name = nullptr;
    g_variant_get(parameters, "(&s&sv)", &group, &name, nullptr);
    return std::string_view(group) == setting.group && std::string_view(name) == setting.name;
}

/// Tells the setting's value as it is and at every change; null for none.
std::array<Subscription, 2> observe(GDBusConnection* connection, const Setting& setting,
                                    const std::function<void(GVariant* value)>& handler) {
    return {observeSignal(connection,
                          {setting.busName, setting.objectPath, setting.interfaceName, setting.signal, setting.group},
                          [&setting, handler](GVariant* parameters) {
                              if (names(parameters, setting)) {
                                  handler(lastValue(parameters).get());
                              }
                          }),
            callMethod(connection, {setting.busName, setting.objectPath, setting.interfaceName, setting.getter},
                       g_variant_new("(ss)", setting.group, setting.name), "(v)",
                       [handler](GVariant* reply) { handler(lastValue(reply).get()); })};
}

}  // namespace

void DesktopColorWatch::follow(TrayInkRule rule) {
    if (rule == rule_) {
        return;
    }
    rule_ = rule;
    xfcePanel_ = {};
    colorScheme_ = {};
    if (rule == TrayInkRule::xfcePanel) {
        xfcePanel_ = observe(connection_, darkXfcePanel, [this](GVariant* value) { setXfcePanel(value); });
    }
    if (rule != TrayInkRule::light) {
        colorScheme_ = observe(connection_, colorScheme, [this](GVariant* value) { setColorScheme(value); });
    }
}

void DesktopColorWatch::setColorScheme(GVariant* value) {
    DesktopColors colors = colors_.value();
    colors.scheme = ColorScheme::noPreference;
    if (value != nullptr && g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32) != FALSE) {
        const guint32 number = g_variant_get_uint32(value);
        colors.scheme = number == 1 ? ColorScheme::dark : number == 2 ? ColorScheme::light : ColorScheme::noPreference;
    }
    setColors(colors);
}

void DesktopColorWatch::setColors(const DesktopColors& colors) {
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
    setColors(colors);
}

}  // namespace thermopix
