#include "platform/qt/windows/TaskbarEntry.h"

#include <QCloseEvent>
#include <QGuiApplication>

namespace thermopix {

TaskbarEntry::TaskbarEntry() {
    setWindowTitle(QGuiApplication::applicationDisplayName());
    setAttribute(Qt::WA_QuitOnClose, false);
    setFixedSize(1, 1);
}

void TaskbarEntry::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && isVisible() && !isMinimized()) {
        showMinimized();
        if (onReopen) {
            onReopen();
        }
    }
}

void TaskbarEntry::closeEvent(QCloseEvent* event) {
    // Whether the program stands in the taskbar is a setting.
    event->ignore();
}

}  // namespace thermopix
