#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <utility>

#include "platform/qt/views/ViewControl.h"
#include "platform/qt/windows/MainMenuBar.h"
#include "shell/Menu.h"

namespace thermopix {

/// A window of fixed content size under the program's menu bar; in the middle of the screen when first shown, and kept
/// when the user closes it. Tells of its visibility.
class ShellWindow final : public QWidget, public AccessibleElement {
public:
    enum class MenuBar { shown, shortcutsOnly };

    /// Takes the content, which has its size.
    ShellWindow(const QString& title, const QString& identifier, std::unique_ptr<QWidget> content, MenuBar menuBar);

    std::function<void()> onWillClose;
    /// Called when the window is shown, restored, miniaturised or closed; nothing is told twice.
    std::function<void(bool isVisible, bool isMiniaturized)> onVisibilityChange;
    std::function<void(MenuAction)> onMainMenu;

    [[nodiscard]] QWidget& content() { return *content_; }
    void setMainMenu(const Menu& menu);

    /// A miniaturised window is restored.
    void present();
    void comeForward();

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Window; }

protected:
    bool event(QEvent* event) override;

private:
    bool wasShown_ = false;
    /// What was told last: visible, miniaturised. Events come already while the menu bar is made.
    std::pair<bool, bool> told_;
    QWidget* content_;
    MainMenuBar* menuBar_;
};

}  // namespace thermopix
