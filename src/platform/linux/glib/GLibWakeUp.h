#pragma once

#include "system/WakeUp.h"

namespace thermopix {

/// Runs `work` on the main loop after each `raise()`. Main thread.
[[nodiscard]] WakeUp makeWakeUp(std::function<void()> work);

}  // namespace thermopix
