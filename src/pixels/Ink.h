#pragma once

#include <cstdint>
#include <optional>

namespace thermopix {

/// What a cell of pixel art carries. `ghost` is an unlit cell that still shows faintly.
enum class Ink : std::uint8_t { none = 0, ghost = 1, full = 2 };

/// Opacity when drawn, 0 to 1.
[[nodiscard]] double alpha(Ink ink);

/// The ink with this raw value; none above 2.
[[nodiscard]] std::optional<Ink> inkFromRawValue(std::uint8_t raw);

/// "#" is full, ":" is ghost, everything else is none.
[[nodiscard]] Ink inkFromArt(char character);
[[nodiscard]] char artCharacter(Ink ink);

}  // namespace thermopix
