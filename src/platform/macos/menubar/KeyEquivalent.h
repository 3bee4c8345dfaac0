#pragma once

#include <cstdint>

#include "shell/Menu.h"

namespace thermopix {

/// Modifier keys as AppKit numbers them.
enum class ModifierFlag : std::uint64_t { shift = 1U << 17U, option = 1U << 19U, command = 1U << 20U };

/// The keys held with an item's key equivalent, as one mask.
[[nodiscard]] std::uint64_t modifierMask(KeyModifiers modifiers);

}  // namespace thermopix
