#pragma once

#include <QFocusEvent>

namespace thermopix::KeyboardFocus {

/// Whether a control that gets the focus this way shows a ring around itself: not after a click, and as before when
/// its window or a menu gave the focus back.
[[nodiscard]] inline bool isMeant(const QFocusEvent& event, bool asBefore) {
    switch (event.reason()) {
        case Qt::TabFocusReason:
        case Qt::BacktabFocusReason:
        case Qt::ShortcutFocusReason:
            return true;
        case Qt::MouseFocusReason:
            return false;
        default:
            return asBefore;
    }
}

}  // namespace thermopix::KeyboardFocus
