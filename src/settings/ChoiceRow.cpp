#include "settings/ChoiceRow.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "pixels/StatusImageRenderer.h"
#include "settings/Identifiers.h"
#include "settings/ViewBuilding.h"

namespace thermopix {

namespace {

constexpr double markPoints = 15;
constexpr double titlePoints = 13;
constexpr double subtitlePoints = 11;
constexpr double rowPadding = 12;
constexpr double rowSpacing = 12;
constexpr double titleSpacing = 2;
constexpr double cornerRadius = 8;
constexpr double selectedOpacity = 0.14;
constexpr double hoverOpacity = 0.04;
constexpr double spriteSpacing = 3;

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

ViewNode ChoiceRow::node() const {
    ViewNode pictureColumn = Views::horizontal(0, {picture});
    pictureColumn.width = pictureWidth;
    ViewNode blurb = Views::text(subtitle, subtitlePoints, ColorRole::secondary);
    blurb.wraps = true;
    ViewNode words = Views::vertical(titleSpacing, {Views::text(title, titlePoints), std::move(blurb)});
    words.fillsWidth = true;
    ViewNode row = Views::horizontal(rowSpacing,
                                     {isSelected ? Views::symbol("checkmark.circle.fill", markPoints, ColorRole::accent)
                                                 : Views::symbol("circle", markPoints, ColorRole::tertiary),
                                      std::move(pictureColumn), std::move(words)});
    row.kind = ViewKind::button;
    row.identifier = identifier;
    row.padding = Insets::all(rowPadding);
    row.fillsWidth = true;
    row.background.cornerRadius = cornerRadius;
    if (isSelected) {
        row.background.fill = RoleColor{ColorRole::accent, selectedOpacity};
    } else {
        row.background.hoverFill = RoleColor{ColorRole::primary, hoverOpacity};
    }
    row.accessibility = {
        .label = std::string(title) + ". " + std::string(subtitle), .hidesChildren = true, .isSelected = isSelected};
    return row;
}

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

ViewNode StyleRow::node() const {
    const auto preview = [this](PixelStyle shown) {
        Appearance look = appearance;
        look.style = shown;
        return StatusImageRenderer::image(display, look);
    };
    double widest = 0;
    for (const PixelStyle each : allCases<PixelStyle>()) {
        widest = std::max(widest, preview(each).width());
    }
    return ChoiceRow{.identifier = std::string(Identifiers::style) + std::string(rawValue(style)),
                     .picture = Views::pixelImage(preview(style), RoleColor{ColorRole::primary}),
                     .pictureWidth = widest,
                     .title = title(style),
                     .subtitle = subtitle(style),
                     .isSelected = style == appearance.style}
        .node();
}

}  // namespace thermopix
