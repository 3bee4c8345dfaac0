#include "pixels/PixelPet.h"

#include <cstddef>

#include "pixels/pets/PetSprites.h"

namespace thermopix {

namespace {

constexpr std::array displayOrder{PixelPet::cat, PixelPet::westie, PixelPet::mac, PixelPet::ghost, PixelPet::none};
static_assert(displayOrder.size() == caseCount<PixelPet>);

constexpr std::size_t blinkFrame = caseCount<PetMood>;

/// A chilly pet is half asleep already, and a scorching one dares not look away.
constexpr bool canBlink(PetMood mood) {
    return mood == PetMood::content || mood == PetMood::warm;
}

}  // namespace

std::span<const PixelPet> pixelPetDisplayOrder() {
    return displayOrder;
}

std::optional<PixelGlyph> sprite(PixelPet pet, PetMood mood, bool blinking) {
    const auto sheet = petSheet(pet);
    if (!sheet) {
        return std::nullopt;
    }
    return sheet->picture(blinking && canBlink(mood) ? blinkFrame : static_cast<std::size_t>(mood));
}

}  // namespace thermopix
