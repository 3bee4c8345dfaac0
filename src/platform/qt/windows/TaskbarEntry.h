#pragma once

#include <QWidget>
#include <functional>

namespace thermopix {

/// Keeps the program in the taskbar while it has no window: a window that is always miniaturised. Choosing it opens
/// the program again.
class TaskbarEntry final : public QWidget {
public:
    TaskbarEntry();

    std::function<void()> onReopen;

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    /// True from its restoring until the turn of the event loop in which it goes back.
    bool isRestored_ = false;
};

}  // namespace thermopix
