#include "platform/linux/windows/DesktopNotification.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/tray/TestBus.h"

namespace thermopix {
namespace {

/// Shows notifications on a connection of its own, and records the calls, printed.
class NotificationServer {
public:
    NotificationServer() : connection_(TestBus::instance().connect()) {
        constexpr const char* xml = R"(<node><interface name="org.freedesktop.Notifications"><method name="Notify">
            <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
            <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
            <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/>
            </method></interface></node>)";
        static constexpr GDBusInterfaceVTable table{
            [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant* parameters,
               GDBusMethodInvocation* invocation, gpointer server) {
                auto& calls = static_cast<NotificationServer*>(server)->shown;
                const GStringHandle printed(g_variant_print(parameters, FALSE));
                calls.emplace_back(printed.get());
                const auto id = static_cast<std::uint32_t>(40 + calls.size());
                g_dbus_method_invocation_return_value(invocation, g_variant_new("(u)", id));
            },
            nullptr,
            nullptr,
            {}};
        const GNodeInfoHandle node(g_dbus_node_info_new_for_xml(xml, nullptr));
        g_dbus_connection_register_object(connection_.get(), "/org/freedesktop/Notifications", node->interfaces[0],
                                          &table, this, nullptr, nullptr);
        takeName(connection_.get(), "org.freedesktop.Notifications");
    }
    ~NotificationServer() { disconnect(std::move(connection_)); }
    NotificationServer(const NotificationServer&) = delete;
    NotificationServer& operator=(const NotificationServer&) = delete;

    [[nodiscard]] GDBusConnection* connection() const { return connection_.get(); }

    std::vector<std::string> shown;

private:
    GObjectHandle<GDBusConnection> connection_;
};

TEST(DesktopNotification, SaysWhoWhatAndWhyWithoutMarkup) {
    NotificationServer server;
    DesktopNotification notification(TestBus::instance().session());
    notification.show("No windows", "a < b & c");
    ASSERT_TRUE(runUntil([&] { return server.shown.size() == 1; }));
    EXPECT_EQ(server.shown.front(),
              "('Thermopix', 0, 'io.github.thermopix.Thermopix', 'No windows', 'a &lt; b &amp; c', [], {}, -1)");
}

TEST(DesktopNotification, ReplacesTheOneThatIsShown) {
    NotificationServer server;
    DesktopNotification notification(TestBus::instance().session());
    notification.show("First", "");
    ASSERT_TRUE(runUntil([&] { return server.shown.size() == 1; }));
    settle(server.connection());
    notification.show("Second", "");
    ASSERT_TRUE(runUntil([&] { return server.shown.size() == 2; }));
    EXPECT_EQ(server.shown.back(), "('Thermopix', 41, 'io.github.thermopix.Thermopix', 'Second', '', [], {}, -1)");
}

TEST(DesktopNotification, NeedsNobodyToShowItAndNoBus) {
    DesktopNotification notification(TestBus::instance().session());
    notification.show("No windows", "");
    settle(TestBus::instance().session());
    DesktopNotification alone(nullptr);
    alone.show("No windows", "");
}

}  // namespace
}  // namespace thermopix
