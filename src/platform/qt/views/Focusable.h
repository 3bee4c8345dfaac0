#pragma once

#include <QFocusEvent>

namespace thermopix {

/// A widget of the toolkit that takes the keyboard, and knows whether it shows a ring around itself: not after a click,
/// and as before when its window or a menu gave the focus back.
template <typename Widget>
class Focusable : public Widget {
public:
    explicit Focusable(QWidget* parent) : Widget(parent) { this->setFocusPolicy(Qt::StrongFocus); }

protected:
    [[nodiscard]] bool showsFocus() const { return this->hasFocus() && isReachedByKey_; }

    void focusInEvent(QFocusEvent* event) override {
        switch (event->reason()) {
            case Qt::TabFocusReason:
            case Qt::BacktabFocusReason:
            case Qt::ShortcutFocusReason:
                isReachedByKey_ = true;
                break;
            case Qt::MouseFocusReason:
                isReachedByKey_ = false;
                break;
            default:
                break;
        }
        Widget::focusInEvent(event);
    }

private:
    bool isReachedByKey_ = false;
};

}  // namespace thermopix
