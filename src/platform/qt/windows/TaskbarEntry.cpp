#include "platform/qt/windows/TaskbarEntry.h"

#include <QCloseEvent>
#include <QTimer>

#include "environment/AppInfo.h"
#include "platform/qt/drawing/Strings.h"

namespace thermopix {

TaskbarEntry::TaskbarEntry() {
    setWindowTitle(qtString(AppInfo::name));
    setAttribute(Qt::WA_QuitOnClose, false);
    setFixedSize(1, 1);
}

void TaskbarEntry::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange || !isVisible() || isMinimized() || isRestored_) {
        return;
    }
    isRestored_ = true;
    QTimer::singleShot(0, this, [this] {
        showMinimized();
        // What the window system still says of the restored window is old.
        QTimer::singleShot(0, this, [this] { isRestored_ = false; });
    });
    onReopen();
}

void TaskbarEntry::closeEvent(QCloseEvent* event) {
    // Whether the program stands in the taskbar is a setting.
    event->ignore();
}

}  // namespace thermopix
