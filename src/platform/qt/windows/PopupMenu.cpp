#include "platform/qt/windows/PopupMenu.h"

#include <QKeyEvent>
#include <utility>

#include "platform/qt/drawing/TextLines.h"

namespace thermopix {

PopupMenu::PopupMenu(Chosen chosen, QWidget* parent) : MenuView(parent, std::move(chosen)) {
    setFont(TextLines::font({}));
}

void PopupMenu::open(QPoint position) {
    popup(position);
    activateWindow();
}

void PopupMenu::keyPressEvent(QKeyEvent* event) {
    const QKeySequence pressed(event->keyCombination());
    for (QAction* action : actions()) {
        if (action->isEnabled() && action->isVisible() && !action->shortcut().isEmpty() &&
            action->shortcut() == pressed) {
            close();
            action->trigger();
            return;
        }
    }
    MenuView::keyPressEvent(event);
}

}  // namespace thermopix
