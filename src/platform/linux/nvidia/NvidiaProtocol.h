#pragma once

#include <array>
#include <cstdint>

/// What the resident program and the process that holds NVIDIA's library say to each other, over a socket that keeps
/// the bounds of records. Every question gets one answer, in the order of asking.
namespace thermopix::NvidiaProtocol {

constexpr const char* executable = "thermopix-nvidia-sensors";
constexpr const char* library = "libnvidia-ml.so.1";

/// The temperature of which card.
struct Question {
    std::uint32_t number = 0;
    /// Ends with a zero.
    std::array<char, 28> pciAddress{};
};

enum class Outcome : std::uint32_t {
    read,
    /// The card has no temperature now.
    notRead,
    libraryMissing,
    /// The library cannot be initialised.
    libraryFails,
};

struct Answer {
    /// The question's.
    std::uint32_t number = 0;
    Outcome outcome = Outcome::notRead;
    /// When the card answered, by the system's monotonic clock.
    std::int64_t nanoseconds = 0;
    std::int64_t celsius = 0;
};

}  // namespace thermopix::NvidiaProtocol
