#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/Enumeration.h"
#include "base/Subscription.h"

namespace thermopix {

/// Fonts and colours of an item's title.
enum class MenuTextStyle {
    /// The menu's own.
    standard,
    /// System font with monospaced digits, 15 points, semibold, primary label colour.
    headline,
    /// System font, 11 points, secondary label colour.
    caption,
};

template <>
struct EnumerationTable<MenuTextStyle> : CaseNames<MenuTextStyle::caption> {};

enum class MenuItemKind { action, information, sectionHeader, separator, submenu };

template <>
struct EnumerationTable<MenuItemKind> : CaseNames<MenuItemKind::submenu> {};

enum class KeyModifiers { command, commandOption, commandShift };

template <>
struct EnumerationTable<KeyModifiers> : CaseNames<KeyModifiers::commandShift> {};

/// What an item does. The first group belongs to this program's controllers; the rest are the platform's standard
/// actions, sent to whatever has the focus.
enum class MenuAction {
    none,
    selectPet,
    selectUnit,
    selectStyle,
    openPreferencesItem,
    checkForUpdates,
    showAbout,
    quit,
    showAboutPanel,
    hide,
    hideOtherApplications,
    unhideAllApplications,
    terminate,
    undo,
    redo,
    cut,
    copy,
    paste,
    selectAll,
    performClose,
    performMiniaturize,
    arrangeInFront,
};

template <>
struct EnumerationTable<MenuAction> : CaseNames<MenuAction::arrangeInFront> {};

struct MenuItem;

/// A menu as a value: what a shell shows, and no more.
struct Menu {
    std::string title;
    std::vector<MenuItem> items;
    /// The system adds the open windows to it.
    bool listsWindows = false;

    friend bool operator==(const Menu&, const Menu&) = default;
};

struct MenuItem {
    MenuItemKind kind = MenuItemKind::action;
    std::string title;
    MenuTextStyle textStyle = MenuTextStyle::standard;
    /// Key equivalent in lower case; empty for none.
    std::string key;
    KeyModifiers modifiers = KeyModifiers::command;
    /// System symbol name; empty for none.
    std::string symbol;
    std::string identifier;
    std::optional<std::string> representedValue;
    bool isOn = false;
    bool isEnabled = true;
    bool isHidden = false;
    MenuAction action = MenuAction::none;
    /// The items of a `submenu`.
    Menu submenu;

    friend bool operator==(const MenuItem&, const MenuItem&) = default;
};

/// The owner of a menu, as a shell sees it. Main thread.
class MenuSource {
public:
    virtual ~MenuSource() = default;

    /// Delivers the menu at once and whenever it has changed.
    virtual Subscription observe(std::function<void(const Menu&)> handler) = 0;

    /// The menu is about to be shown; brings its marks up to date.
    virtual void menuWillOpen() = 0;

    /// The user chose the item; one that does nothing is ignored.
    virtual void perform(const MenuItem& item) = 0;
};

}  // namespace thermopix
