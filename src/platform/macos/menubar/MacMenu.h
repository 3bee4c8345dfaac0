#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <vector>

#include "shell/Menu.h"

@class ThermopixMenuTarget;

NS_ASSUME_NONNULL_BEGIN

namespace thermopix {

/// A menu value as an AppKit menu; its items are brought up to date in place, also while it is open. Main thread.
class MacMenu {
public:
    enum class Enabling {
        /// An item is enabled when its value says so.
        byValue,
        /// AppKit asks whatever has the focus.
        byResponder,
    };
    using Perform = std::function<void(const MenuItem&)>;

    MacMenu(Enabling enabling, Perform perform, std::function<void()> willOpen = nullptr);
    ~MacMenu();
    MacMenu(const MacMenu&) = delete;
    MacMenu& operator=(const MacMenu&) = delete;

    void show(const Menu& menu);

    [[nodiscard]] NSMenu* menu() const { return menu_; }

    /// The submenu in which the system lists the open windows; none when there is no such.
    [[nodiscard]] NSMenu* _Nullable windowsMenu() const;

private:
    void rebuild(const Menu& menu);
    [[nodiscard]] NSMenuItem* makeItem(const MenuItem& value, std::size_t index);
    [[nodiscard]] NSMenuItem* makeActionItem(const MenuItem& value, std::size_t index);

    Enabling enabling_;
    Perform perform_;
    Menu shown_;
    NSMenu* menu_;
    ThermopixMenuTarget* target_;
    std::vector<std::unique_ptr<MacMenu>> submenus_;
};

}  // namespace thermopix

NS_ASSUME_NONNULL_END
