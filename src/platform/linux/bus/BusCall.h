#pragma once

#include <chrono>
#include <functional>

#include "base/Subscription.h"
#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

/// A method on the bus.
struct BusMethod {
    const char* busName;
    const char* objectPath;
    const char* interfaceName;
    const char* name;
};

/// Calls the method and tells `handler` the reply, or null when there was none of that type in that time;
/// dropping the handle ends the waiting. `parameters` is a tuple, consumed when floating. Main thread.
Subscription callMethod(GDBusConnection* connection, const BusMethod& method, GVariant* parameters,
                        const char* replyType, std::function<void(GVariant* reply)> handler,
                        std::chrono::milliseconds patience = std::chrono::seconds(3));

/// The value of a property, asked for like any method; null when there is none.
Subscription readProperty(GDBusConnection* connection, const char* busName, const char* objectPath,
                          const char* interfaceName, const char* property, std::function<void(GVariant* value)> handler,
                          std::chrono::milliseconds patience = std::chrono::seconds(3));

}  // namespace thermopix
