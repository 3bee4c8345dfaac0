#pragma once

#include <QAbstractButton>

#include "platform/qt/views/ViewButton.h"

namespace thermopix {

/// A button whose label is the node's children; the whole rectangle is clickable. Up and down go to the buttons beside
/// it, and choose them where the buttons are a choice.
class PlainButton final : public ViewButton<QAbstractButton>, public AccessibleElement {
public:
    PlainButton(QWidget* parent, const ReportEvent& report);

    void show(const ViewNode& node) override;

    /// Whether one of several such buttons is always the selected one.
    enum class Purpose { action, choice };

    /// Says which buttons stand before and after it, null at the ends; it is said anew before either is gone.
    void setNeighbors(PlainButton* previous, PlainButton* next, Purpose purpose);

    [[nodiscard]] bool isSelected() const { return node_.accessibility.isSelected; }
    [[nodiscard]] QAccessible::Role accessibleRole() const override;
    void describeState(QAccessible::State& state) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void moveTo(PlainButton* neighbor);

    PlainButton* previous_ = nullptr;
    PlainButton* next_ = nullptr;
    Purpose purpose_ = Purpose::action;
};

}  // namespace thermopix
