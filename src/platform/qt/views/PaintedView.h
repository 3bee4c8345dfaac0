#pragma once

#include "platform/qt/views/ViewControl.h"

namespace thermopix {

/// Shows a node that the user only looks at: a text, a picture, a ground for other controls, or a whole stack that is
/// one element to assistive technology.
class PaintedView final : public QWidget, public ViewControl, public AccessibleElement {
public:
    explicit PaintedView(QWidget* parent);

    void show(const ViewNode& node) override;
    [[nodiscard]] QWidget& widget() override { return *this; }
    [[nodiscard]] QAccessible::Role accessibleRole() const override;
    void describeState(QAccessible::State& state) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ViewNode node_;
};

}  // namespace thermopix
