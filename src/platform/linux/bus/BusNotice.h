#pragma once

#include <functional>
#include <string_view>

#include "base/Subscription.h"
#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

/// A signal on the bus; the fields that are null match everything.
struct BusSignal {
    const char* busName;
    const char* objectPath;
    const char* interfaceName;
    const char* name;
    const char* firstArgument = nullptr;
};

/// Calls `handler` with the parameters, a tuple of any type, each time the signal arrives. Main thread.
Subscription observeSignal(GDBusConnection* connection, const BusSignal& signal,
                           std::function<void(GVariant* parameters)> handler);
/// The same with the unique name of the sender.
Subscription observeSignal(GDBusConnection* connection, const BusSignal& signal,
                           std::function<void(GVariant* parameters, std::string_view sender)> handler);

/// Tells the unique name of the name's owner, empty when it has none: soon after the call and at every change.
Subscription observeNameOwner(GDBusConnection* connection, const char* busName,
                              std::function<void(std::string_view owner)> handler);

enum class NameOwnership { owned, refused };

/// Owns a bus name while the handle lives, and tells whether that worked, soon after the call and at every change.
Subscription ownName(GDBusConnection* connection, const char* busName, std::function<void(NameOwnership)> handler);

}  // namespace thermopix
