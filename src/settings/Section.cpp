#include "settings/Section.h"

#include <iterator>
#include <utility>

#include "settings/ViewBuilding.h"

namespace thermopix {

namespace {

constexpr double sectionSpacing = 9;
constexpr double smallPrint = 11;
constexpr double titleLetterSpacing = 0.6;
constexpr Insets cardPadding{.top = 7, .leading = 12, .bottom = 7, .trailing = 12};
constexpr double cardSpacing = 7;
constexpr double cardCornerRadius = 8;
constexpr double listPadding = 4;
/// Around the rows' own corners.
constexpr double listCornerRadius = 12;
constexpr double rowSpacing = 2;

ViewNode onCard(ViewNode node, const Insets& padding, double cornerRadius) {
    node.fillsWidth = true;
    node.padding = padding;
    node.background.fill = RoleColor{ColorRole::card};
    node.background.cornerRadius = cornerRadius;
    return node;
}

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
    std::vector<ViewNode> rows;
    for (ViewNode& control : content) {
        if (!rows.empty()) {
            rows.push_back(Views::divider());
        }
        control.fillsWidth = control.kind != ViewKind::button;
        rows.push_back(std::move(control));
    }
    return onCard(Views::vertical(cardSpacing, std::move(rows)), cardPadding, cardCornerRadius);
}

ViewNode choiceList(std::vector<ViewNode> rows) {
    return onCard(Views::vertical(rowSpacing, std::move(rows)), Insets::all(listPadding), listCornerRadius);
}

ViewNode captionText(std::string_view text) {
    ViewNode node = Views::text(text, smallPrint, ColorRole::secondary);
    node.wraps = true;
    return node;
}

}  // namespace thermopix
