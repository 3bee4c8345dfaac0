#pragma once

#include <functional>

#include "base/Subscription.h"

namespace thermopix {

/// Calls `handler` on the main loop whenever the process gets the signal: SIGHUP, SIGINT, SIGTERM, SIGUSR1, SIGUSR2 or
/// SIGWINCH. Signals that come in quick succession may be told once. Main thread.
Subscription observeUnixSignal(int signal, std::function<void()> handler);

/// From now on the signal does nothing but what observers do, to the end of the process.
void withholdUnixSignal(int signal);

}  // namespace thermopix
