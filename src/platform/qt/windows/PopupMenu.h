#pragma once

#include <QMenu>
#include <QPoint>
#include <functional>

#include "platform/qt/windows/MenuView.h"

namespace thermopix {

/// The status item's menu, opened on its own. The keys that it shows beside its items work while it is open.
class PopupMenu final : public QMenu {
public:
    explicit PopupMenu(MenuView::Chosen chosen);

    std::function<void()> onClosed;

    void showMenu(const Menu& menu) { view_.show(menu); }

    /// Kept on the screen whatever the position.
    void open(QPoint position);

    [[nodiscard]] MenuView& view() { return view_; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    MenuView view_;
};

}  // namespace thermopix
