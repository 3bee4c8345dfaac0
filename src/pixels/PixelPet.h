#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "base/Enumeration.h"
#include "pixels/PixelGlyph.h"
#include "sensing/PetMood.h"

namespace thermopix {

enum class PixelPet { none, cat, westie, mac, ghost };

template <>
struct EnumerationTable<PixelPet> {
    struct Row {
        PixelPet value;
        std::string_view rawValue;
        std::string_view title;
        std::string_view subtitle;
    };
    static constexpr std::array rows{
        Row{PixelPet::none, "none", "No pet", "Just the temperature."},
        Row{PixelPet::cat, "cat", "Cat", "Sleeps through anything under 45°."},
        Row{PixelPet::westie, "westie", "Westie", "A terrier. Starts panting before your fans do."},
        Row{PixelPet::mac, "mac", "Mac", "Smiles back, the way the Finder does. Until it doesn't."},
        Row{PixelPet::ghost, "ghost", "Ghost", "Already dead. Still concerned."},
    };
};
static_assert(isCompleteTable<PixelPet::ghost>());

/// Every sprite's size in cells.
inline constexpr std::int64_t petWidth = 8;
inline constexpr std::int64_t petHeight = 7;

/// The order of pickers: "No pet" comes last.
[[nodiscard]] std::span<const PixelPet> pixelPetDisplayOrder();

/// The pet's face for a mood; none for `none`. Only `content` and `warm` pets close their eyes when blinking.
[[nodiscard]] std::optional<PixelGlyph> sprite(PixelPet pet, PetMood mood, bool blinking);

}  // namespace thermopix
