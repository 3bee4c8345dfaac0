#pragma once

#include <QWidget>
#include <functional>
#include <memory>

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
    /// Shown, restored, miniaturised or closed, and nothing of it twice.
    std::function<void(bool isVisible, bool isMiniaturized)> onVisibilityChange;
    std::function<void(MenuAction)> onMainMenu;

    [[nodiscard]] QWidget& content() { return *content_; }
    void setMainMenu(const Menu& menu);

    /// A miniaturised window is restored.
    void present();
    void comeForward();
    /// Without a word.
    void discard();

    /// Visible or miniaturised.
    [[nodiscard]] bool isShown() const { return isVisible(); }

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Window; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void reportVisibility();

    QWidget* content_;
    MainMenuBar* menuBar_;
    bool wasShown_ = false;
    bool toldVisible_ = false;
    bool toldMiniaturized_ = false;
};

}  // namespace thermopix
