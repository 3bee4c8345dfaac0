#include "platform/qt/views/PlainButton.h"

#include <QKeyEvent>
#include <QPainter>

#include "platform/qt/drawing/RoleColors.h"
#include "platform/qt/drawing/ViewPainter.h"
#include "platform/qt/views/KeyboardFocus.h"
#include "platform/qt/views/LeafSizes.h"

namespace thermopix {

namespace {

constexpr double ringOpacity = 0.75;

bool isFilledWithAccent(const ViewNode& node) {
    const auto* role = std::get_if<RoleColor>(&node.background.fill);
    return role != nullptr && *role == RoleColor{ColorRole::accent};
}

}  // namespace

PlainButton::PlainButton(QWidget* parent, ReportEvent report) : QAbstractButton(parent) {
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QAbstractButton::clicked, this, [this, report = std::move(report)] {
        report({node_.identifier, {}});
    });
}

void PlainButton::show(const ViewNode& node) {
    setNames(*this, node.identifier, node.accessibility.label);
    if (node_ == node) {
        return;
    }
    const bool wasSelected = isSelected();
    node_ = node;
    update();
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
                      isDown() ? Pointer::pressing : (underMouse() ? Pointer::over : Pointer::away),
                      LeafSizes::measure);
    if (hasFocus() && showsFocus_) {
        const auto role = isFilledWithAccent(node_) ? ColorRole::onAccent : ColorRole::accent;
        ViewPainter::drawFocusRing(painter, rect(), node_.background.cornerRadius,
                                   RoleColors::faded(role, ringOpacity, palette()));
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
        case Qt::Key_Return:
        case Qt::Key_Enter:
            click();
            break;
        default:
            QAbstractButton::keyPressEvent(event);
    }
}

void PlainButton::focusInEvent(QFocusEvent* event) {
    showsFocus_ = KeyboardFocus::isMeant(*event, showsFocus_);
    QAbstractButton::focusInEvent(event);
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
