#pragma once

#include <QMenuBar>
#include <QPointer>
#include <functional>
#include <vector>

#include "platform/qt/windows/MenuView.h"
#include "shell/Menu.h"

namespace thermopix {

/// The program's menus in a window. Actions of windows and of text fields are done here; what is the program's goes
/// to `chosen`. Items that no desktop of this kind can do are greyed out.
class MainMenuBar final : public QMenuBar {
public:
    using Chosen = std::function<void(MenuAction)>;

    /// `untitled` is the name of the menu that has none of its own.
    MainMenuBar(QWidget* window, QString untitled, Chosen chosen);

    void show(const Menu& menu);

private:
    void perform(MenuAction action);
    [[nodiscard]] bool canPerform(MenuAction action) const;
    void focusMoved(QWidget* focused);
    void listWindows(QMenu& menu);

    QString untitled_;
    Chosen chosen_;
    Menu shown_;
    std::vector<MenuView*> views_;
    /// The widget that had the focus before a menu took it.
    QPointer<QWidget> focused_;
    /// The entries of open windows, made each time that their menu opens.
    std::vector<QAction*> windowEntries_;
};

}  // namespace thermopix
