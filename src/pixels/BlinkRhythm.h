#pragma once

#include <chrono>

/// How the pet blinks, wherever it is drawn. The period is fixed; the leeway only lets the system join wake-ups.
namespace thermopix::BlinkRhythm {

inline constexpr std::chrono::milliseconds period{5500};
inline constexpr std::chrono::milliseconds leeway{400};
/// How long the eyes stay closed.
inline constexpr std::chrono::milliseconds closed{160};

}  // namespace thermopix::BlinkRhythm
