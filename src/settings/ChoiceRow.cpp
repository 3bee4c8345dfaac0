#include "settings/ChoiceRow.h"

#include <utility>

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

}  // namespace thermopix
