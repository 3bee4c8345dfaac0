#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// How the resident program and its window process speak: one JSON object a line, both ways, over one stream socket
/// that the window process inherits. It says `Hello` first, and ends with its last window or when the socket closes. A
/// request that shows something is answered with an event that says it is shown, unless it was already.
namespace thermopix::WindowProtocol {

/// Both sides come from one build; a process that says another version is not talked to.
inline constexpr std::int32_t version = 1;

/// The name of the executable.
inline constexpr std::string_view executable = "thermopix-windows";

/// Followed by the number of the inherited socket.
inline constexpr std::string_view socketOption = "--socket";

/// How the window process ends where it cannot show anything: its display is not there, or not one that it can use.
inline constexpr int noDisplayStatus = 3;

/// Longer lines, without their line feed, are malformed.
inline constexpr std::size_t maximumRequestBytes = std::size_t{4} << 20U;
inline constexpr std::size_t maximumEventBytes = std::size_t{64} << 10U;

}  // namespace thermopix::WindowProtocol
