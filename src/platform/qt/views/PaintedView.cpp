#include "platform/qt/views/PaintedView.h"

#include <QPainter>
#include <algorithm>

#include "platform/qt/drawing/ViewPainter.h"
#include "platform/qt/views/LeafSizes.h"

namespace thermopix {

namespace {

bool showsPicture(const ViewNode& node) {
    return node.kind == ViewKind::pixelImage || node.kind == ViewKind::symbol ||
           std::any_of(node.children.begin(), node.children.end(), showsPicture);
}

std::string spokenText(const ViewNode& node) {
    if (!node.accessibility.label.empty()) {
        return node.accessibility.label;
    }
    if (node.kind == ViewKind::pixelImage) {
        return node.image.description.value_or("");
    }
    return node.kind == ViewKind::text ? node.text : "";
}

}  // namespace

PaintedView::PaintedView(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_Hover);
}

void PaintedView::show(const ViewNode& node) {
    setNames(*this, node.identifier, spokenText(node));
    if (node_ != node) {
        node_ = node;
        update();
    }
}

QAccessible::Role PaintedView::accessibleRole() const {
    if (node_.kind == ViewKind::divider) {
        return QAccessible::Separator;
    }
    if (accessibleName().isEmpty()) {
        return QAccessible::Pane;
    }
    return showsPicture(node_) ? QAccessible::Graphic : QAccessible::StaticText;
}

void PaintedView::describeState(QAccessible::State& state) const {
    state.selected = node_.accessibility.isSelected;
    state.readOnly = true;
}

void PaintedView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const auto pointer = underMouse() ? ViewPainter::Pointer::over : ViewPainter::Pointer::away;
    if (node_.kind == ViewKind::stack && !node_.accessibility.hidesChildren) {
        ViewPainter::drawBackground(painter, node_, size(), palette(), pointer);
    } else {
        ViewPainter::draw(painter, node_, size(), palette(), pointer, LeafSizes::measure);
    }
}

}  // namespace thermopix
