#include <QPainter>
#include <algorithm>

#include "platform/qt/drawing/ViewPainter.h"
#include "platform/qt/views/Controls.h"

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

class PaintedView final : public View<QWidget>, public AccessibleElement {
public:
    explicit PaintedView(QWidget* parent) : View(parent) { setAttribute(Qt::WA_Hover); }

    void show(const ViewNode& node) override {
        setNames(*this, node.identifier, spokenText(node));
        if (node_ != node) {
            node_ = node;
            update();
        }
    }

    [[nodiscard]] QAccessible::Role accessibleRole() const override {
        if (node_.kind == ViewKind::divider) {
            return QAccessible::Separator;
        }
        if (accessibleName().isEmpty()) {
            return QAccessible::Pane;
        }
        return showsPicture(node_) ? QAccessible::Graphic : QAccessible::StaticText;
    }

    void describeState(QAccessible::State& state) const override {
        state.selected = node_.accessibility.isSelected;
        state.readOnly = true;
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const auto pointer = underMouse() ? ViewPainter::Pointer::over : ViewPainter::Pointer::away;
        if (node_.kind == ViewKind::stack && !node_.accessibility.hidesChildren) {
            ViewPainter::drawBackground(painter, node_, size(), palette(), pointer);
        } else {
            ViewPainter::draw(painter, node_, size(), palette(), pointer, Controls::measure);
        }
    }
};

}  // namespace

ViewControl* Controls::makePaintedView(QWidget* parent, const ReportEvent& /*report*/) {
    return new PaintedView(parent);
}

}  // namespace thermopix
