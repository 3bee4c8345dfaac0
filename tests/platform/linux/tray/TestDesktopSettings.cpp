#include "platform/linux/tray/TestDesktopSettings.h"

#include <utility>

namespace thermopix {

TestDesktopSettings::TestDesktopSettings(const Service& service, GVariant* value)
    : service_(service), value_(g_variant_ref_sink(value)), connection_(TestBus::instance().connect()) {
    const std::string xml = std::string("<node><interface name='") + service.interfaceName + "'><method name='" +
                            service.readMethod +
                            "'><arg type='s' direction='in'/><arg type='s' direction='in'/>"
                            "<arg type='v' direction='out'/></method></interface></node>";
    const GNodeInfoHandle info(g_dbus_node_info_new_for_xml(xml.c_str(), nullptr));
    static constexpr GDBusInterfaceVTable table{
        [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant* parameters,
           GDBusMethodInvocation* invocation, gpointer data) {
            auto& self = *static_cast<TestDesktopSettings*>(data);
            const char* place = nullptr;
            const char* setting = nullptr;
            g_variant_get(parameters, "(&s&s)", &place, &setting);
            ++self.readCount;
            if (std::string_view(place) == self.service_.place && std::string_view(setting) == self.service_.setting) {
                g_dbus_method_invocation_return_value(invocation, g_variant_new("(v)", self.value_.get()));
            } else {
                g_dbus_method_invocation_return_error(invocation, G_DBUS_ERROR, G_DBUS_ERROR_FAILED, "No such setting");
            }
        },
        nullptr,
        nullptr,
        {}};
    g_dbus_connection_register_object(connection_.get(), service.objectPath, info->interfaces[0], &table, this, nullptr,
                                      nullptr);
    takeName(connection_.get(), service.busName);
}

TestDesktopSettings::~TestDesktopSettings() {
    disconnect(std::move(connection_));
}

void TestDesktopSettings::change(GVariant* value) {
    value_.reset(g_variant_ref_sink(value));
    announce(g_variant_new("(ssv)", service_.place, service_.setting, value_.get()));
}

void TestDesktopSettings::announce(GVariant* parameters) {
    g_dbus_connection_emit_signal(connection_.get(), nullptr, service_.objectPath, service_.interfaceName,
                                  service_.changeSignal, parameters, nullptr);
}

}  // namespace thermopix
