#include "platform/linux/tray/TestTrayHost.h"

#include <gtest/gtest.h>

#include <utility>

namespace thermopix {
namespace {

constexpr const char* watcherInterface = "org.kde.StatusNotifierWatcher";
constexpr const char* itemInterface = "org.kde.StatusNotifierItem";
constexpr const char* menuInterface = "com.canonical.dbusmenu";

constexpr const char* watcherXml = R"xml(<node><interface name="org.kde.StatusNotifierWatcher">
<method name="RegisterStatusNotifierItem"><arg name="service" type="s" direction="in"/></method>
<method name="RegisterStatusNotifierHost"><arg name="service" type="s" direction="in"/></method>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<property name="ProtocolVersion" type="i" access="read"/>
<signal name="StatusNotifierHostRegistered"/>
<signal name="StatusNotifierHostUnregistered"/>
</interface></node>)xml";

std::string printed(GVariant* value) {
    const GStringHandle text(g_variant_print(value, FALSE));
    return text.get();
}

TestMenuEntry menuEntry(GVariant* value) {
    TestMenuEntry entry;
    GVariantIter* properties = nullptr;
    GVariantIter* children = nullptr;
    g_variant_get(value, "(ia{sv}av)", &entry.id, &properties, &children);
    const char* name = nullptr;
    GVariant* child = nullptr;
    while (g_variant_iter_loop(properties, "{&sv}", &name, &child) != FALSE) {
        entry.properties[name] = printed(child);
    }
    while (g_variant_iter_loop(children, "v", &child) != FALSE) {
        entry.children.push_back(menuEntry(child));
    }
    g_variant_iter_free(properties);
    g_variant_iter_free(children);
    return entry;
}

}  // namespace

TestMenuEntry TestMenuEntry::read(GVariant* reply) {
    if (reply == nullptr) {
        ADD_FAILURE() << "no layout";
        return {};
    }
    const GVariantHandle root(g_variant_get_child_value(reply, 1));
    return menuEntry(root.get());
}

TestTrayHost::TestTrayHost(Draws draws) : connection_(TestBus::instance().connect()), draws_(draws == Draws::atOnce) {
    static const GNodeInfoHandle watcher(g_dbus_node_info_new_for_xml(watcherXml, nullptr));
    static constexpr GDBusInterfaceVTable table{
        [](GDBusConnection*, const gchar* sender, const gchar*, const gchar*, const gchar* method, GVariant* parameters,
           GDBusMethodInvocation* invocation, gpointer data) {
            auto& self = *static_cast<TestTrayHost*>(data);
            if (std::string_view(method) == "RegisterStatusNotifierItem") {
                const char* reference = nullptr;
                g_variant_get(parameters, "(&s)", &reference);
                self.registrations.push_back({sender, reference});
                if (self.refusesItems) {
                    g_dbus_method_invocation_return_error(invocation, G_DBUS_ERROR, G_DBUS_ERROR_ACCESS_DENIED, "No.");
                    return;
                }
            }
            g_dbus_method_invocation_return_value(invocation, nullptr);
        },
        [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* name, GError** error,
           gpointer data) -> GVariant* {
            const auto& self = *static_cast<TestTrayHost*>(data);
            if (std::string_view(name) == "ProtocolVersion") {
                return g_variant_new_int32(0);
            }
            if (!self.wrongHostAnswer.empty()) {
                g_set_error(error, G_DBUS_ERROR, G_DBUS_ERROR_FAILED, "%s", self.wrongHostAnswer.c_str());
                return nullptr;
            }
            return g_variant_new_boolean(self.draws_ ? TRUE : FALSE);
        },
        nullptr,
        {}};
    g_dbus_connection_register_object(connection_.get(), "/StatusNotifierWatcher", watcher->interfaces[0], &table, this,
                                      nullptr, nullptr);
    g_dbus_connection_signal_subscribe(
        connection_.get(), nullptr, itemInterface, nullptr, nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* name, GVariant*, gpointer data) {
            static_cast<TestTrayHost*>(data)->itemSignals.emplace_back(name);
        },
        this, nullptr);
    g_dbus_connection_signal_subscribe(
        connection_.get(), nullptr, menuInterface, nullptr, nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* name, GVariant* parameters,
           gpointer data) {
            auto& self = *static_cast<TestTrayHost*>(data);
            self.menuSignals.emplace_back(name);
            self.lastMenuSignal = printed(parameters);
        },
        this, nullptr);
    takeName(connection_.get(), watcherInterface);
}

TestTrayHost::~TestTrayHost() {
    disconnect(std::move(connection_));
}

void TestTrayHost::startDrawing() {
    draws_ = true;
    emit("StatusNotifierHostRegistered");
}

void TestTrayHost::stopDrawing() {
    draws_ = false;
    emit("StatusNotifierHostUnregistered");
}

void TestTrayHost::emit(const char* signal) {
    g_dbus_connection_emit_signal(connection_.get(), nullptr, "/StatusNotifierWatcher", watcherInterface, signal,
                                  nullptr, nullptr);
}

bool TestTrayHost::waitForRegistration(std::size_t count) {
    if (!runUntil([this, count] { return registrations.size() >= count; })) {
        return false;
    }
    settle(connection_.get());
    return true;
}

std::string TestTrayHost::itemBusName() const {
    const auto& [sender, reference] = registrations.back();
    return reference.starts_with('/') ? sender : reference;
}

std::string TestTrayHost::itemPath() const {
    const auto& reference = registrations.back().reference;
    return reference.starts_with('/') ? reference : "/StatusNotifierItem";
}

TestReply TestTrayHost::callItem(const char* method, GVariant* parameters) const {
    return callFrom(connection_.get(), itemBusName(), itemPath(), itemInterface, method, parameters);
}

TestReply TestTrayHost::callMenu(const char* method, GVariant* parameters) const {
    const GVariantHandle path = property("Menu");
    return callFrom(connection_.get(), itemBusName(), g_variant_get_string(path.get(), nullptr), menuInterface, method,
                    parameters);
}

GVariantHandle TestTrayHost::property(const char* name) const {
    const auto reply = callFrom(connection_.get(), itemBusName(), itemPath(), "org.freedesktop.DBus.Properties", "Get",
                                g_variant_new("(ss)", itemInterface, name));
    GVariant* value = nullptr;
    if (reply.value != nullptr) {
        g_variant_get(reply.value.get(), "(v)", &value);
    }
    return GVariantHandle(value);
}

std::string TestTrayHost::text(const char* name) const {
    const GVariantHandle value = property(name);
    return value == nullptr ? "(none)" : printed(value.get());
}

std::vector<TrayPicture> TestTrayHost::pictures() const {
    const GVariantHandle value = property("IconPixmap");
    std::vector<TrayPicture> pictures;
    GVariantIter iterator;
    g_variant_iter_init(&iterator, value.get());
    gint32 width = 0;
    gint32 height = 0;
    GVariant* bytes = nullptr;
    while (g_variant_iter_loop(&iterator, "(ii@ay)", &width, &height, &bytes) != FALSE) {
        gsize size = 0;
        const auto* data = static_cast<const std::uint8_t*>(g_variant_get_fixed_array(bytes, &size, 1));
        pictures.push_back({width, height, {data, data + size}});
    }
    return pictures;
}

std::string TestTrayHost::introspection() const {
    const auto reply = callFrom(connection_.get(), itemBusName(), itemPath(), "org.freedesktop.DBus.Introspectable",
                                "Introspect", nullptr);
    const char* xml = nullptr;
    g_variant_get(reply.value.get(), "(&s)", &xml);
    return xml;
}

TestMenuEntry TestTrayHost::menu() const {
    const auto reply =
        callMenu("GetLayout", g_variant_new("(ii@as)", 0, -1, g_variant_new_array(G_VARIANT_TYPE_STRING, nullptr, 0)));
    return TestMenuEntry::read(reply.value.get());
}

TestMenuEntry TestTrayHost::entry(const std::string& label) const {
    for (const auto& child : menu().children) {
        if (child.property("label") == "'" + label + "'") {
            return child;
        }
    }
    ADD_FAILURE() << "no menu entry " << label;
    return {};
}

void TestTrayHost::aboutToShowMenu() const {
    EXPECT_EQ(callMenu("AboutToShow", g_variant_new("(i)", 0)).error, "");
}

void TestTrayHost::click(std::int32_t menuEntry) const {
    static_cast<void>(callMenu("Event", g_variant_new("(isvu)", menuEntry, "clicked", g_variant_new_int32(0), 0U)));
    settle(connection_.get());
}

}  // namespace thermopix
