#include "settings/PetRow.h"

#include <string>
#include <utility>
#include <vector>

#include "pixels/StatusImageRenderer.h"
#include "settings/ChoiceRow.h"
#include "settings/Identifiers.h"
#include "settings/ViewBuilding.h"

namespace thermopix {

namespace {

constexpr double spriteSpacing = 3;
constexpr double titlePoints = 13;

double spritesWidth(PixelSize size) {
    constexpr auto moods = static_cast<double>(caseCount<PetMood>);
    return moods * static_cast<double>(petWidth) * cell(size) + (moods - 1) * spriteSpacing;
}

StatusImage spriteImage(PixelPet pet, PetMood mood, PixelSize size, bool blinking) {
    StatusImage image = StatusImageRenderer::petImage(pet, mood, size);
    if (const auto closed = blinking ? sprite(pet, mood, true) : std::nullopt) {
        image.bitmap = PixelBitmap(closed->width(), closed->height(), closed->cells());
    }
    return image;
}

}  // namespace

ViewNode PetRow::node() const {
    ViewNode picture;
    if (pet == PixelPet::none) {
        picture = Views::text(title(pet), titlePoints, ColorRole::tertiary);
    } else {
        std::vector<ViewNode> sprites;
        for (const PetMood mood : allCases<PetMood>()) {
            const bool isCurrent = mood == display.mood;
            sprites.push_back(
                Views::pixelImage(spriteImage(pet, mood, appearance.size, appearance.blinking && isCurrent),
                                  RoleColor{isCurrent ? ColorRole::accent : ColorRole::tertiary}));
        }
        picture = Views::horizontal(spriteSpacing, std::move(sprites));
    }
    return ChoiceRow{.identifier = std::string(Identifiers::pet) + std::string(rawValue(pet)),
                     .picture = std::move(picture),
                     .pictureWidth = spritesWidth(appearance.size),
                     .title = title(pet),
                     .subtitle = subtitle(pet),
                     .isSelected = pet == appearance.pet}
        .node();
}

}  // namespace thermopix
