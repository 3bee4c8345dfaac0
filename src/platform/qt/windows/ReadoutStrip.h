#pragma once

#include <QAbstractButton>
#include <QPoint>
#include <functional>
#include <optional>

#include "pixels/StatusImage.h"
#include "platform/qt/views/ViewControl.h"
#include "platform/qt/windows/PopupMenu.h"
#include "shell/Menu.h"

namespace thermopix {

/// A piece of menu bar with the readout, above all other windows at the upper edge of the screen. A click or a key
/// opens the menu; it can be dragged along the edge.
class ReadoutStrip final : public QAbstractButton, public AccessibleElement {
public:
    explicit ReadoutStrip(MenuView::Chosen chosen);

    std::function<void(QPoint)> onMoved;

    void setReadout(const StatusImage& image, const std::string& note);
    void setMenu(const Menu& menu) { menu_.showMenu(menu); }

    /// Stands at the right end of the edge when there is no position.
    void present(std::optional<QPoint> position);

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::ButtonMenu; }
    void describeState(QAccessible::State& state) const override;
    [[nodiscard]] QMenu* openedMenu() override { return menu_.isVisible() ? &menu_ : nullptr; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] PopupMenu& menu() { return menu_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void openMenu();
    void moveAlongEdge(int left);
    /// Where it was put; what the window system says of it meanwhile may be relative to a frame.
    [[nodiscard]] QPoint place() const { return place_.value_or(pos()); }

    PopupMenu menu_;
    StatusImage image_;
    std::optional<QPoint> place_;
    /// How far right of the strip's left end the pointer holds it, while its button is down.
    std::optional<int> grip_;
    bool wasDragged_ = false;
    /// The pointer opened it, which needs no focus ring.
    bool isPointed_ = false;
};

}  // namespace thermopix
