#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Enumeration.h"
#include "shell/Menu.h"

namespace thermopix {

/// A menu as lines of text, one for each item, with everything about it that is not the default:
/// `[x] Title {style} <symbol> Command+k #identifier =value (disabled) -> action`.
inline std::vector<std::string> menuText(const Menu& menu) {
    std::vector<std::string> lines;
    for (const auto& item : menu.items) {
        std::string line;
        switch (item.kind) {
            case MenuItemKind::separator:
                line = "----";
                break;
            case MenuItemKind::sectionHeader:
                line = "== " + item.title;
                break;
            case MenuItemKind::information:
                line = "\"" + item.title + "\"";
                break;
            case MenuItemKind::submenu:
                line = "> " + item.title;
                break;
            case MenuItemKind::action:
                line = (item.isOn ? "[x] " : "") + item.title;
                break;
        }
        if (item.textStyle != MenuTextStyle::standard) {
            line += item.textStyle == MenuTextStyle::headline ? " {headline}" : " {caption}";
        }
        if (!item.symbol.empty()) {
            line += " <" + item.symbol + ">";
        }
        if (!item.key.empty() || item.modifiers != KeyModifiers::command) {
            constexpr std::string_view names[] = {" Command+", " Command+Option+", " Command+Shift+"};
            line += std::string(names[static_cast<std::size_t>(item.modifiers)]) + item.key;
        }
        if (!item.identifier.empty()) {
            line += " #" + item.identifier;
        }
        if (item.representedValue) {
            line += " =" + *item.representedValue;
        }
        if (!item.isEnabled) {
            line += " (disabled)";
        }
        if (item.isHidden) {
            line += " (hidden)";
        }
        if (item.action != MenuAction::none) {
            line += " -> " + std::string(rawValue(item.action));
        }
        lines.push_back(line);
    }
    return lines;
}

}  // namespace thermopix
