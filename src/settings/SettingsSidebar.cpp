#include "settings/SettingsSidebar.h"

#include <string>
#include <utility>
#include <vector>

#include "settings/Identifiers.h"
#include "settings/ViewBuilding.h"

namespace thermopix {

namespace {

constexpr double rowFont = 13;
constexpr double rowPadding = 8;
constexpr double rowMinHeight = 28;
constexpr double rowCornerRadius = 6;
constexpr double hoverOpacity = 0.06;
constexpr double symbolSpacing = 8;
constexpr double versionFont = 11;
constexpr Insets sidebarPadding{.top = 16, .leading = 10, .bottom = 14, .trailing = 10};
constexpr double rowSpacing = 2;

}  // namespace

ViewNode sidebarRow(Pane pane, Pane selection) {
    const bool isSelected = pane == selection;
    const auto role = isSelected ? ColorRole::onAccent : ColorRole::primary;
    ViewNode label = Views::horizontal(
        symbolSpacing, {Views::symbol(row(pane).symbol, rowFont, role), Views::text(title(pane), rowFont, role)});
    label.kind = ViewKind::button;
    label.identifier = std::string(Identifiers::pane) + std::string(rawValue(pane));
    label.padding = Insets::all(rowPadding);
    label.minHeight = rowMinHeight;
    label.fillsWidth = true;
    label.background.cornerRadius = rowCornerRadius;
    if (isSelected) {
        label.background.fill = RoleColor{ColorRole::accent};
    } else {
        label.background.hoverFill = RoleColor{ColorRole::primary, hoverOpacity};
    }
    label.accessibility = {.label = std::string(title(pane)), .hidesChildren = true, .isSelected = isSelected};
    return label;
}

ViewNode settingsSidebar(Pane selection, std::string_view shortVersion, double titleBarHeight) {
    std::vector<ViewNode> children;
    for (const Pane pane : allCases<Pane>()) {
        children.push_back(sidebarRow(pane, selection));
    }
    children.push_back(Views::spacer());
    ViewNode version = Views::text("Version " + std::string(shortVersion), versionFont, ColorRole::secondary);
    version.padding.leading = rowPadding;
    children.push_back(std::move(version));
    ViewNode sidebar = Views::vertical(rowSpacing, std::move(children));
    sidebar.width = sidebarWidth;
    sidebar.padding = sidebarPadding;
    sidebar.padding.top += titleBarHeight;
    sidebar.background.fill = RoleColor{ColorRole::sidebar};
    return sidebar;
}

}  // namespace thermopix
