#pragma once

#include <chrono>
#include <cstddef>

/// How much of a settings file is read, and how long its disk is waited for.
namespace thermopix::StorageLimits {

/// What is longer, or nested deeper, is no settings record.
inline constexpr std::size_t largestFile = 64U << 10U;
inline constexpr std::size_t deepestNesting = 64;
/// How long another program's lock is waited for; then the file is written without.
inline constexpr std::chrono::milliseconds lockPatience{1000};
/// The pause before what could not be stored is tried again.
inline constexpr std::chrono::seconds retryPause{5};
/// How long the end of the program waits for its settings.
inline constexpr std::chrono::milliseconds endPatience{1000};

}  // namespace thermopix::StorageLimits
