#pragma once

#include <QAbstractButton>
#include <QPoint>
#include <functional>
#include <memory>
#include <optional>

#include "menubar/Menu.h"
#include "pixels/StatusImage.h"
#include "platform/qt/views/ViewControl.h"
#include "platform/qt/windows/PopupMenu.h"

namespace thermopix {

/// A piece of menu bar with the readout, above all other windows at the upper edge of the screen. A click or a key
/// opens the menu; it can be dragged along the edge.
class ReadoutStrip final : public QAbstractButton, public AccessibleElement {
public:
    explicit ReadoutStrip(MenuView::Chosen chosen);

    std::function<void()> onMenuWillOpen;
    std::function<void()> onMenuDidClose;
    std::function<void(QPoint)> onMoved;

    void setReadout(const StatusImage& image, const QString& label);
    void setMenu(const Menu& menu) { menu_.showMenu(menu); }

    /// At the right end of the edge when there is no position.
    void present(std::optional<QPoint> position);

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::ButtonMenu; }
    void describeState(QAccessible::State& state) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] PopupMenu& menu() { return menu_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void openMenu();
    void moveAlongEdge(int left);
    [[nodiscard]] QRect edge() const;

    PopupMenu menu_;
    StatusImage image_;
    /// Of the pointer inside the strip, while its button is down.
    std::optional<QPoint> grip_;
    bool wasDragged_ = false;
    /// The right end stays where it is when the readout changes its width.
    bool isPlaced_ = false;
};

}  // namespace thermopix
