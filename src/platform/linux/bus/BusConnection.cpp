#include "platform/linux/bus/BusConnection.h"

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace thermopix {

namespace {

BusConnection open(GBusType type) {
    GDBusConnection* connection = g_bus_get_sync(type, nullptr, nullptr);
    if (connection != nullptr) {
        g_dbus_connection_set_exit_on_close(connection, FALSE);
    }
    return BusConnection(connection);
}

// Without an address GLib would launch a bus of its own, on which nobody listens.
bool hasSessionBusAddress() {
    const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (address != nullptr && *address != '\0') {
        return true;
    }
    const char* runtimeFolder = std::getenv("XDG_RUNTIME_DIR");
    std::error_code error;
    return runtimeFolder != nullptr && std::filesystem::exists(std::filesystem::path(runtimeFolder) / "bus", error);
}

void deliverClosed(GDBusConnection* /*bus*/, gboolean /*remotePeerVanished*/, GError* /*error*/, gpointer handler) {
    (*static_cast<std::function<void()>*>(handler))();
}

template <typename Handler>
void destroyClosure(gpointer handler, GClosure* /*closure*/) {
    delete static_cast<Handler*>(handler);
}

}  // namespace

BusConnection openSessionBus() {
    return hasSessionBusAddress() ? open(G_BUS_TYPE_SESSION) : BusConnection();
}

BusConnection openSystemBus() {
    return open(G_BUS_TYPE_SYSTEM);
}

Subscription onClosed(GDBusConnection* bus, std::function<void()> handler) {
    using Handler = std::function<void()>;
    const gulong id = g_signal_connect_data(bus, "closed", G_CALLBACK(deliverClosed), new Handler(std::move(handler)),
                                            destroyClosure<Handler>, static_cast<GConnectFlags>(0));
    const std::shared_ptr<GDBusConnection> held = retained(bus);
    return Subscription([held, id] { g_signal_handler_disconnect(held.get(), id); });
}

}  // namespace thermopix
