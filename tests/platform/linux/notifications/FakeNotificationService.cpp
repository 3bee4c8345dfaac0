#include "FakeNotificationService.h"

#include <stdexcept>
#include <string_view>
#include <utility>

#include "platform/linux/tray/TestBus.h"

namespace thermopix {

namespace {

constexpr const char* name = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";
constexpr std::uint32_t firstIdentifier = 71;

constexpr const char* introspection = R"(<node><interface name="org.freedesktop.Notifications">
  <method name="GetCapabilities"><arg direction="out" type="as"/></method>
  <method name="Notify">
    <arg direction="in" type="s"/><arg direction="in" type="u"/><arg direction="in" type="s"/>
    <arg direction="in" type="s"/><arg direction="in" type="s"/><arg direction="in" type="as"/>
    <arg direction="in" type="a{sv}"/><arg direction="in" type="i"/><arg direction="out" type="u"/>
  </method>
</interface></node>)";

std::uint32_t identifierOf(std::size_t index) {
    return firstIdentifier + static_cast<std::uint32_t>(index);
}

}  // namespace

FakeNotificationService::FakeNotificationService(std::vector<std::string> serviceCapabilities)
    : capabilities(std::move(serviceCapabilities)),
      connection_(TestBus::instance().connect()),
      description_(g_dbus_node_info_new_for_xml(introspection, nullptr)) {
    static constexpr GDBusInterfaceVTable table{
        [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* method, GVariant* parameters,
           GDBusMethodInvocation* invocation,
           gpointer self) { static_cast<FakeNotificationService*>(self)->answer(method, parameters, invocation); },
        nullptr,
        nullptr,
        {}};
    if (g_dbus_connection_register_object(connection_.get(), path, description_->interfaces[0], &table, this, nullptr,
                                          nullptr) == 0) {
        throw std::runtime_error("no notification service");
    }
    takeName(connection_.get(), name);
}

FakeNotificationService::~FakeNotificationService() {
    disconnect(std::move(connection_));
}

void FakeNotificationService::giveActivationToken(std::size_t index, const std::string& token) {
    send("ActivationToken", g_variant_new("(us)", identifierOf(index), token.c_str()));
}

void FakeNotificationService::invoke(std::size_t index, const std::string& key) {
    send("ActionInvoked", g_variant_new("(us)", identifierOf(index), key.c_str()));
}

void FakeNotificationService::close(std::size_t index) {
    constexpr guint32 dismissedByTheUser = 2;
    send("NotificationClosed", g_variant_new("(uu)", identifierOf(index), dismissedByTheUser));
}

void FakeNotificationService::send(const char* signal, GVariant* parameters) {
    g_dbus_connection_emit_signal(connection_.get(), nullptr, path, name, signal, parameters, nullptr);
    settle(connection_.get());
}

void FakeNotificationService::answer(const char* method, GVariant* parameters, GDBusMethodInvocation* invocation) {
    if (std::string_view(method) == "GetCapabilities") {
        GVariantBuilder list;
        g_variant_builder_init(&list, G_VARIANT_TYPE("as"));
        for (const auto& capability : capabilities) {
            g_variant_builder_add(&list, "s", capability.c_str());
        }
        g_dbus_method_invocation_return_value(invocation, g_variant_new("(as)", &list));
        return;
    }
    if (refuses) {
        g_dbus_method_invocation_return_dbus_error(invocation, "org.example.Refused", "not now");
        return;
    }
    const char* application = nullptr;
    const char* icon = nullptr;
    const char* title = nullptr;
    const char* body = nullptr;
    const char** actions = nullptr;
    GVariant* hints = nullptr;
    Notification notification;
    g_variant_get(parameters, "(&su&s&s&s^a&s@a{sv}i)", &application, &notification.replaces, &icon, &title, &body,
                  &actions, &hints, &notification.timeout);
    const GVariantHandle heldHints(hints);
    notification.application = application;
    notification.icon = icon;
    notification.title = title;
    notification.body = body;
    for (const char** action = actions; *action != nullptr; ++action) {
        notification.actions.emplace_back(*action);
    }
    g_free(actions);
    const char* desktopEntry = "";
    gboolean isTransient = FALSE;
    g_variant_lookup(hints, "desktop-entry", "&s", &desktopEntry);
    g_variant_lookup(hints, "transient", "b", &isTransient);
    notification.desktopEntry = desktopEntry;
    notification.isTransient = isTransient != FALSE;
    shown.push_back(std::move(notification));
    g_dbus_method_invocation_return_value(invocation, g_variant_new("(u)", identifierOf(shown.size() - 1)));
}

}  // namespace thermopix
