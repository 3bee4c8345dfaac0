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

/// Calls `handler` when the bus is lost.
[[nodiscard]] Subscription onClosed(GDBusConnection* bus, std::function<void()> handler);

}  // namespace thermopix
