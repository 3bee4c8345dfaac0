#include "platform/qt/windows/MainMenuBar.h"

#include <QApplication>
#include <QMetaMethod>
#include <utility>

#include "platform/qt/drawing/Strings.h"

namespace thermopix {

namespace {

// The slot of a text field that does the action; null for actions of another kind.
const char* fieldSlot(MenuAction action) {
    switch (action) {
        case MenuAction::undo:
            return "undo";
        case MenuAction::redo:
            return "redo";
        case MenuAction::cut:
            return "cut";
        case MenuAction::copy:
            return "copy";
        case MenuAction::paste:
            return "paste";
        case MenuAction::selectAll:
            return "selectAll";
        default:
            return nullptr;
    }
}

bool hasSlot(const QWidget* widget, const char* slot) {
    const QByteArray signature = QByteArray(slot) + "()";
    return widget != nullptr && widget->metaObject()->indexOfSlot(signature.constData()) >= 0;
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

MainMenuBar::~MainMenuBar() {
    removeMenus();
}

void MainMenuBar::show(const Menu& menu) {
    if (shown_ == menu) {
        return;
    }
    shown_ = menu;
    removeMenus();
    for (const auto& item : shown_.items) {
        QMenu* native = addMenu(item.title.empty() ? untitled_ : qtString(item.title));
        views_.push_back(std::make_unique<MenuView>(
            *native, [this](const MenuItem& chosen) { perform(chosen.action); },
            [this](const MenuItem& asked) { return canPerform(asked.action); }));
        views_.back()->show(item.submenu);
        // The shortcuts belong to the window, whether the menus are seen in it or not.
        window()->addActions(native->actions());
        if (item.submenu.listsWindows) {
            connect(native, &QMenu::aboutToShow, this, [this, native] { listWindows(*native); });
        }
    }
}

void MainMenuBar::perform(MenuAction action) {
    if (!canPerform(action)) {
        return;
    }
    if (const char* slot = fieldSlot(action)) {
        QMetaObject::invokeMethod(focused_, slot);
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
            break;
    }
    const char* slot = fieldSlot(action);
    return slot == nullptr || hasSlot(focused_, slot);
}

void MainMenuBar::focusMoved(QWidget* focused) {
    if (focused == nullptr || focused == this || focused->window() != window()) {
        return;
    }
    focused_ = focused;
    for (const auto& view : views_) {
        view->refreshEnabled();
    }
}

void MainMenuBar::removeMenus() {
    windowEntries_.clear();
    while (!views_.empty()) {
        QMenu* native = &views_.back()->menu();
        views_.pop_back();
        delete native;
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
