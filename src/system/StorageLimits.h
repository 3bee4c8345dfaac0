#pragma once

#include <chrono>
#include <cstddef>

namespace thermopix {

/// How long, and how much of it, settings that are files are waited for.
namespace StorageLimits {
/// What is longer, or nested deeper, is no settings record.
inline constexpr std::size_t largestFile = 64U << 10U;
inline constexpr std::size_t deepestNesting = 64;
/// How long another program's lock is waited for; then the file is written without.
inline constexpr std::chrono::milliseconds lockPatience{1000};
/// The pause before what could not be stored is tried again.
inline constexpr std::chrono::seconds retryPause{5};
/// How long the end of the program waits for its settings.
inline constexpr std::chrono::milliseconds endPatience{1000};
}  // namespace StorageLimits

}  // namespace thermopix
