#pragma once

#include <cstdint>

namespace thermopix {

/// How many times this process has called `operator new` so far, on all threads.
[[nodiscard]] std::int64_t heapAllocations();

}  // namespace thermopix
