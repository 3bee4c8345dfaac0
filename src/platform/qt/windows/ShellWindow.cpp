#include "platform/qt/windows/ShellWindow.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

#include "environment/AppInfo.h"
#include "platform/qt/drawing/Strings.h"

namespace thermopix {

ShellWindow::ShellWindow(const QString& title, const QString& identifier, std::unique_ptr<QWidget> content,
                         MenuBar menuBar)
    : QWidget(nullptr, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                           Qt::WindowCloseButtonHint | Qt::CustomizeWindowHint),
      content_(content.release()),
      menuBar_(new MainMenuBar(this, qtString(AppInfo::name), [this](MenuAction action) { onMainMenu(action); })) {
    setObjectName(identifier);
    setWindowTitle(title);
    setAttribute(Qt::WA_QuitOnClose, false);
    content_->setFixedSize(content_->size());
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    rows->setSpacing(0);
    if (menuBar == MenuBar::shown) {
        rows->setMenuBar(menuBar_);
    } else {
        menuBar_->hide();
    }
    rows->addWidget(content_);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

void ShellWindow::setMainMenu(const Menu& menu) {
    menuBar_->show(menu);
}

void ShellWindow::present() {
    if (!wasShown_) {
        wasShown_ = true;
        adjustSize();
        if (const QScreen* screen = QGuiApplication::primaryScreen()) {
            move(screen->availableGeometry().center() - rect().center());
        }
    }
    if (isMinimized()) {
        setWindowState(windowState() & ~Qt::WindowMinimized);
    }
    show();
    comeForward();
}

void ShellWindow::comeForward() {
    raise();
    activateWindow();
}

bool ShellWindow::event(QEvent* event) {
    if (event->type() == QEvent::Close && isVisible()) {
        onWillClose();
    }
    const bool isDone = QWidget::event(event);
    const std::pair now(isVisible() && !isMinimized(), isVisible() && isMinimized());
    if (std::exchange(told_, now) != now) {
        onVisibilityChange(now.first, now.second);
    }
    return isDone;
}

}  // namespace thermopix
