#include "platform/linux/bus/BusCall.h"

#include <memory>
#include <utility>

namespace thermopix {
namespace {

using Handler = std::function<void(GVariant*)>;

void finish(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Handler> handler(static_cast<Handler*>(data));
    GErrorSlot error;
    const GVariantHandle reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, error.out()));
    if (!error.matches(G_IO_ERROR, G_IO_ERROR_CANCELLED)) {
        (*handler)(reply.get());
    }
}

}  // namespace

Subscription callMethod(GDBusConnection* connection, const BusMethod& method, GVariant* parameters,
                        const char* replyType, std::function<void(GVariant* reply)> handler,
                        std::chrono::milliseconds patience) {
    const std::shared_ptr<GCancellable> cancellable(g_cancellable_new(), &g_object_unref);
    const GVariantHandle owned(parameters == nullptr ? nullptr : g_variant_ref_sink(parameters));
    g_dbus_connection_call(connection, method.busName, method.objectPath, method.interfaceName, method.name,
                           owned.get(), G_VARIANT_TYPE(replyType), G_DBUS_CALL_FLAGS_NONE,
                           static_cast<int>(patience.count()), cancellable.get(), &finish,
                           new Handler(std::move(handler)));
    return Subscription([cancellable] { g_cancellable_cancel(cancellable.get()); });
}

Subscription readProperty(GDBusConnection* connection, const char* busName, const char* objectPath,
                          const char* interfaceName, const char* property, std::function<void(GVariant* value)> handler,
                          std::chrono::milliseconds patience) {
    return callMethod(
        connection, {busName, objectPath, "org.freedesktop.DBus.Properties", "Get"},
        g_variant_new("(ss)", interfaceName, property), "(v)",
        [handler = std::move(handler)](GVariant* reply) {
            GVariant* value = nullptr;
            if (reply != nullptr) {
                g_variant_get(reply, "(v)", &value);
            }
            const GVariantHandle owned(value);
            handler(owned.get());
        },
        patience);
}

}  // namespace thermopix
