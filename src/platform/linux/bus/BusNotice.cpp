#include "platform/linux/bus/BusNotice.h"

#include <utility>

namespace thermopix {
namespace {

using SignalHandler = std::function<void(GVariant*, std::string_view)>;
using OwnerHandler = std::function<void(std::string_view)>;
using OwnershipHandler = std::function<void(NameOwnership)>;

/// Calls a copy, because the handler may end its own subscription.
template <typename Handler, typename... Arguments>
void tell(gpointer data, Arguments... arguments) {
    const Handler handler = *static_cast<Handler*>(data);
    handler(arguments...);
}

template <typename Handler>
void release(gpointer data) {
    delete static_cast<Handler*>(data);
}

}  // namespace

Subscription observeSignal(GDBusConnection* connection, const BusSignal& signal, SignalHandler handler) {
    const guint id = g_dbus_connection_signal_subscribe(
        connection, signal.busName, signal.interfaceName, signal.name, signal.objectPath, signal.firstArgument,
        G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const gchar* sender, const gchar*, const gchar*, const gchar*, GVariant* parameters,
           gpointer data) { tell<SignalHandler>(data, parameters, std::string_view(sender == nullptr ? "" : sender)); },
        new SignalHandler(std::move(handler)), &release<SignalHandler>);
    return Subscription([id, shared = std::shared_ptr<GDBusConnection>(retained(connection))] {
        g_dbus_connection_signal_unsubscribe(shared.get(), id);
    });
}

Subscription observeSignal(GDBusConnection* connection, const BusSignal& signal,
                           std::function<void(GVariant*)> handler) {
    return observeSignal(
        connection, signal,
        [handler = std::move(handler)](GVariant* parameters, std::string_view /*sender*/) { handler(parameters); });
}

Subscription observeNameOwner(GDBusConnection* connection, const char* busName, OwnerHandler handler) {
    const guint id = g_bus_watch_name_on_connection(
        connection, busName, G_BUS_NAME_WATCHER_FLAGS_NONE,
        [](GDBusConnection*, const gchar*, const gchar* owner, gpointer data) {
            tell<OwnerHandler>(data, std::string_view(owner));
        },
        [](GDBusConnection*, const gchar*, gpointer data) { tell<OwnerHandler>(data, std::string_view()); },
        new OwnerHandler(std::move(handler)), &release<OwnerHandler>);
    return Subscription([id] { g_bus_unwatch_name(id); });
}

Subscription ownName(GDBusConnection* connection, const char* busName, OwnershipHandler handler) {
    const guint id = g_bus_own_name_on_connection(
        connection, busName, G_BUS_NAME_OWNER_FLAGS_DO_NOT_QUEUE,
        [](GDBusConnection*, const gchar*, gpointer data) { tell<OwnershipHandler>(data, NameOwnership::owned); },
        [](GDBusConnection*, const gchar*, gpointer data) { tell<OwnershipHandler>(data, NameOwnership::refused); },
        new OwnershipHandler(std::move(handler)), &release<OwnershipHandler>);
    return Subscription([id] { g_bus_unown_name(id); });
}

}  // namespace thermopix
