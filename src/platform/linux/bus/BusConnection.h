#pragma once

#include <gio/gio.h>

#include <functional>

#include "base/Subscription.h"
#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

using BusConnection = GObjectHandle<GDBusConnection>;

/// The session's bus; null when there is none. Never starts one. Does not end the process when the bus goes.
[[nodiscard]] BusConnection openSessionBus();

/// The system's bus; null when there is none.
[[nodiscard]] BusConnection openSystemBus();

/// Whether the name has an owner now; false when the bus does not answer.
[[nodiscard]] bool hasNameOwner(GDBusConnection* bus, const char* name);

/// Calls `handler` when the bus is lost.
[[nodiscard]] Subscription onClosed(GDBusConnection* bus, std::function<void()> handler);

}  // namespace thermopix
