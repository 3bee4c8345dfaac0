#include "platform/qt/windows/MainMenuBar.h"

#include <QApplication>
#include <QMetaObject>
#include <string>
#include <utility>

#include "platform/qt/drawing/Strings.h"

namespace thermopix {

namespace {

// The focused text field does these, in slots of the same names.
bool isOfTextField(MenuAction action) {
    return action >= MenuAction::undo && action <= MenuAction::selectAll;
}

bool hasSlot(const QWidget* widget, MenuAction action) {
    const std::string signature = std::string(rawValue(action)) + "()";
    return widget != nullptr && widget->metaObject()->indexOfSlot(signature.c_str()) >= 0;
}

QWidgetList shownWindows() {
    QWidgetList windows;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->windowType() == Qt::Window && widget->isVisible() && !widget->windowTitle().isEmpty()) {
            windows.append(widget);
        }
    }
    return windows;
}

void bringForward(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}

}  // namespace

MainMenuBar::MainMenuBar(QWidget* window, QString untitled, Chosen chosen)
    : QMenuBar(window), untitled_(std::move(untitled)), chosen_(std::move(chosen)) {
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*old*/, QWidget* focused) { focusMoved(focused); });
}

void MainMenuBar::show(const Menu& menu) {
    if (shown_ == menu) {
        return;
    }
    shown_ = menu;
    windowEntries_.clear();
    qDeleteAll(std::exchange(views_, {}));
    for (const auto& item : shown_.items) {
        auto* view = views_.emplace_back(new MenuView(
            this, [this](const MenuItem& chosen) { perform(chosen.action); },
            [this](const MenuItem& asked) { return canPerform(asked.action); }));
        view->setTitle(item.title.empty() ? untitled_ : qtString(item.title));
        view->showMenu(item.submenu);
        addMenu(view);
        // The shortcuts belong to the window, whether the menus are seen in it or not.
        window()->addActions(view->actions());
        if (item.submenu.listsWindows) {
            connect(view, &QMenu::aboutToShow, this, [this, view] { listWindows(*view); });
        }
    }
}

void MainMenuBar::perform(MenuAction action) {
    if (!canPerform(action)) {
        return;
    }
    if (isOfTextField(action)) {
        QMetaObject::invokeMethod(focused_, std::string(rawValue(action)).c_str());
        return;
    }
    switch (action) {
        case MenuAction::hide:
            for (QWidget* shown : shownWindows()) {
                shown->showMinimized();
            }
            break;
        case MenuAction::performClose:
            window()->close();
            break;
        case MenuAction::performMiniaturize:
            window()->showMinimized();
            break;
        case MenuAction::arrangeInFront:
            for (QWidget* shown : shownWindows()) {
                shown->raise();
            }
            window()->raise();
            break;
        default:
            chosen_(action);
    }
}

bool MainMenuBar::canPerform(MenuAction action) const {
    switch (action) {
        case MenuAction::none:
        case MenuAction::hideOtherApplications:
        case MenuAction::unhideAllApplications:
            return false;
        default:
            return !isOfTextField(action) || hasSlot(focused_, action);
    }
}

void MainMenuBar::focusMoved(QWidget* focused) {
    if (focused == nullptr || focused == this || focused->window() != window()) {
        return;
    }
    focused_ = focused;
    for (auto* view : views_) {
        view->refresh();
    }
}

void MainMenuBar::listWindows(QMenu& menu) {
    for (QAction* entry : windowEntries_) {
        menu.removeAction(entry);
        entry->deleteLater();
    }
    windowEntries_ = {menu.addSeparator()};
    for (QWidget* shown : shownWindows()) {
        QAction* entry = menu.addAction(withoutMnemonics(shown->windowTitle()));
        entry->setCheckable(true);
        entry->setChecked(shown == window());
        connect(entry, &QAction::triggered, shown, [shown] { bringForward(*shown); });
        windowEntries_.push_back(entry);
    }
}

}  // namespace thermopix
