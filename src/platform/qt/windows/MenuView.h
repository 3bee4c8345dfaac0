#pragma once

#include <QMenu>
#include <functional>

#include "shell/Menu.h"

namespace thermopix {

/// A native menu that shows a menu value. A value of the same shape is brought up to date in place, also while the menu
/// is open.
class MenuView : public QMenu {
public:
    using Chosen = std::function<void(const MenuItem&)>;
    /// Whether this desktop can do what the item says; asked for each action item.
    using CanDo = std::function<bool(const MenuItem&)>;

    MenuView(QWidget* parent, Chosen chosen, CanDo canDo = {});

    void showMenu(const Menu& menu);

    /// Asks `canDo` anew.
    void refresh();

private:
    void rebuild();
    void describe(QAction& action, const MenuItem& item);

    Chosen chosen_;
    CanDo canDo_;
    Menu shown_;
};

}  // namespace thermopix
