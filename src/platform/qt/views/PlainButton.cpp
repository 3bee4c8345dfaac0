#include "platform/qt/views/PlainButton.h"

#include <QPainter>

#include "platform/qt/drawing/ViewPainter.h"
#include "platform/qt/views/Controls.h"

namespace thermopix {

ViewControl* Controls::makePlainButton(QWidget* parent, const ReportEvent& report) {
    return new PlainButton(parent, report);
}

PlainButton::PlainButton(QWidget* parent, const ReportEvent& report) : ViewButton(parent) {
    setAttribute(Qt::WA_Hover);
    connect(this, &QAbstractButton::clicked, this, [this, report] { report({node_.identifier, {}}); });
}

void PlainButton::show(const ViewNode& node) {
    const bool wasSelected = isSelected();
    ViewButton::show(node);
    if (wasSelected != isSelected()) {
        QAccessible::State changed;
        changed.selected = true;
        changed.checked = true;
        QAccessibleStateChangeEvent event(this, changed);
        QAccessible::updateAccessibility(&event);
    }
}

void PlainButton::setNeighbors(PlainButton* previous, PlainButton* next, Purpose purpose) {
    previous_ = previous;
    next_ = next;
    purpose_ = purpose;
}

QAccessible::Role PlainButton::accessibleRole() const {
    return purpose_ == Purpose::choice ? QAccessible::RadioButton : QAccessible::Button;
}

void PlainButton::describeState(QAccessible::State& state) const {
    state.selectable = true;
    state.selected = isSelected();
    state.checkable = purpose_ == Purpose::choice;
    state.checked = isSelected();
    state.pressed = isDown();
}

void PlainButton::paintEvent(QPaintEvent* /*event*/) {
    using ViewPainter::Pointer;
    QPainter painter(this);
    ViewPainter::draw(painter, node_, size(), palette(),
                      isDown() ? Pointer::pressing : (underMouse() ? Pointer::over : Pointer::away), Controls::measure);
    if (showsFocus()) {
        const auto role =
            node_.background.fill == Fill(RoleColor{ColorRole::accent}) ? ColorRole::onAccent : ColorRole::accent;
        ViewPainter::drawFocusRing(painter, rect(), node_.background.cornerRadius, palette(), role);
    }
}

void PlainButton::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Up:
            moveTo(previous_);
            break;
        case Qt::Key_Down:
            moveTo(next_);
            break;
        case Qt::Key_Left:
        case Qt::Key_Right:
            break;
        default:
            ViewButton::keyPressEvent(event);
    }
}

void PlainButton::moveTo(PlainButton* neighbor) {
    if (neighbor == nullptr) {
        return;
    }
    neighbor->setFocus(Qt::TabFocusReason);
    if (purpose_ == Purpose::choice) {
        neighbor->click();
    }
}

}  // namespace thermopix
