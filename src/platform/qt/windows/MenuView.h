#pragma once

#include <QKeySequence>
#include <QMenu>
#include <functional>
#include <vector>

#include "shell/Menu.h"

namespace thermopix {

/// Shows a menu value in a native menu. A value of the same shape is brought up to date in place, also while the menu
/// is open.
class MenuView {
public:
    using Chosen = std::function<void(const MenuItem&)>;
    /// Whether this desktop can do what the item says; asked for each action item.
    using CanDo = std::function<bool(const MenuItem&)>;

    /// `menu` outlives the view.
    MenuView(QMenu& menu, Chosen chosen, CanDo canDo = {});

    void show(const Menu& menu);

    [[nodiscard]] QMenu& menu() { return menu_; }

    /// The action of the item at this place; the place may be that of no action item.
    [[nodiscard]] QAction* action(std::size_t index) const { return actions_.at(index); }

    /// Asks `canDo` anew.
    void refreshEnabled();

    [[nodiscard]] static QKeySequence shortcut(const MenuItem& item);

private:
    void rebuild();
    void describe(QAction& action, const MenuItem& item);

    QMenu& menu_;
    Chosen chosen_;
    CanDo canDo_;
    Menu shown_;
    std::vector<QAction*> actions_;
};

}  // namespace thermopix
