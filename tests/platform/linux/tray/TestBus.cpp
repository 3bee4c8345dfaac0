#include "platform/linux/tray/TestBus.h"

#include <gtest/gtest.h>

namespace thermopix {

TestBus& TestBus::instance() {
    static TestBus bus;
    return bus;
}

TestBus::TestBus() : daemon_(g_test_dbus_new(G_TEST_DBUS_NONE)) {
    g_test_dbus_up(daemon_.get());
    session_.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    g_dbus_connection_set_exit_on_close(session_.get(), FALSE);
    g_dbus_connection_add_filter(
        session_.get(),
        [](GDBusConnection*, GDBusMessage* message, gboolean isIncoming, gpointer self) {
            if (isIncoming == FALSE) {
                ++static_cast<TestBus*>(self)->sentMessages_;
            }
            return message;
        },
        this, nullptr);
}

TestBus::~TestBus() {
    g_test_dbus_stop(daemon_.get());
}

GObjectHandle<GDBusConnection> TestBus::connect() const {
    return GObjectHandle<GDBusConnection>(g_dbus_connection_new_for_address_sync(
        g_test_dbus_get_bus_address(daemon_.get()),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr));
}

std::int64_t TestBus::sentMessages() const {
    g_dbus_connection_flush_sync(session_.get(), nullptr, nullptr);
    return sentMessages_;
}

bool runUntil(const std::function<bool()>& condition) {
    // The tick wakes the loop for conditions that serve the context themselves.
    constexpr guint tickInMilliseconds = 5;
    constexpr int patienceInTicks = 24000;
    int ticks = 0;
    const GSourceHandle tick(g_timeout_source_new(tickInMilliseconds));
    g_source_set_callback(
        tick.get(),
        [](gpointer data) -> gboolean {
            ++*static_cast<int*>(data);
            return G_SOURCE_CONTINUE;
        },
        &ticks, nullptr);
    g_source_attach(tick.get(), nullptr);
    bool holds = condition();
    while (!holds && ticks < patienceInTicks) {
        g_main_context_iteration(nullptr, TRUE);
        holds = condition();
    }
    return holds;
}

TestReply callFrom(GDBusConnection* caller, const std::string& busName, const std::string& objectPath,
                   const char* interfaceName, const char* method, GVariant* parameters) {
    struct Pending {
        bool isAnswered = false;
        TestReply reply;
    } pending;
    g_dbus_connection_call(
        caller, busName.c_str(), objectPath.c_str(), interfaceName, method, parameters, nullptr, G_DBUS_CALL_FLAGS_NONE,
        -1, nullptr,
        [](GObject* source, GAsyncResult* result, gpointer data) {
            auto& answered = *static_cast<Pending*>(data);
            GErrorSlot error;
            answered.reply.value.reset(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, error.out()));
            if (error.get() != nullptr) {
                const GStringHandle name(g_dbus_error_get_remote_error(error.get()));
                answered.reply.error = name == nullptr ? std::string(error.message()) : std::string(name.get());
            }
            answered.isAnswered = true;
        },
        &pending);
    while (!pending.isAnswered) {
        g_main_context_iteration(nullptr, TRUE);
    }
    return std::move(pending.reply);
}

void settle(GDBusConnection* connection) {
    const std::string session = g_dbus_connection_get_unique_name(TestBus::instance().session());
    for (int i = 0; i < 3; ++i) {
        static_cast<void>(callFrom(connection, session, "/", "org.freedesktop.DBus.Peer", "Ping", nullptr));
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
    }
}

void takeName(GDBusConnection* connection, const char* busName) {
    const GVariantHandle reply(g_dbus_connection_call_sync(
        connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", busName, 4U), G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    guint32 result = 0;
    ASSERT_NE(reply, nullptr);
    g_variant_get(reply.get(), "(u)", &result);
    ASSERT_EQ(result, 1U) << busName;
}

void disconnect(GObjectHandle<GDBusConnection> connection) {
    const std::string name = g_dbus_connection_get_unique_name(connection.get());
    g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
    const auto hasOwner = [&name] {
        const auto reply = callFrom(TestBus::instance().session(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                    "org.freedesktop.DBus", "NameHasOwner", g_variant_new("(s)", name.c_str()));
        gboolean answer = FALSE;
        g_variant_get(reply.value.get(), "(b)", &answer);
        return answer != FALSE;
    };
    ASSERT_TRUE(runUntil([&hasOwner] { return !hasOwner(); }));
}

}  // namespace thermopix
