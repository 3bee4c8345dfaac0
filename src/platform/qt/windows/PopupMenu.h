#pragma once

#include <QPoint>

#include "platform/qt/windows/MenuView.h"

namespace thermopix {

/// The status item's menu, opened on its own. The keys that it shows beside its items work while it is open.
class PopupMenu final : public MenuView {
public:
    explicit PopupMenu(Chosen chosen, QWidget* parent = nullptr);

    /// The menu stays on the screen whatever the position.
    void open(QPoint position);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace thermopix
