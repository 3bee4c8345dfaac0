#include "settings/Section.h"

#include <iterator>
#include <utility>

#include "settings/ViewBuilding.h"

namespace thermopix {

namespace {

constexpr double sectionSpacing = 9;
constexpr double smallPrint = 11;
constexpr double titleLetterSpacing = 0.6;
constexpr double cardPadding = 12;
constexpr double cardSpacing = 10;
constexpr double cardCornerRadius = 8;

}  // namespace

ViewNode section(std::string_view title, std::vector<ViewNode> content) {
    std::vector<ViewNode> children;
    children.push_back(Views::text(title, smallPrint, ColorRole::secondary));
    children.front().textStyle.letterSpacing = titleLetterSpacing;
    children.insert(children.end(), std::make_move_iterator(content.begin()), std::make_move_iterator(content.end()));
    ViewNode node = Views::vertical(sectionSpacing, std::move(children));
    node.fillsWidth = true;
    return node;
}

ViewNode card(std::vector<ViewNode> content) {
    ViewNode node = Views::vertical(cardSpacing, std::move(content));
    node.fillsWidth = true;
    node.padding = Insets::all(cardPadding);
    node.background.fill = RoleColor{ColorRole::card};
    node.background.cornerRadius = cardCornerRadius;
    return node;
}

ViewNode captionText(std::string_view text) {
    ViewNode node = Views::text(text, smallPrint, ColorRole::secondary);
    node.wraps = true;
    return node;
}

}  // namespace thermopix
