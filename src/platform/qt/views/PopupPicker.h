#pragma once

#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <optional>

#include "platform/qt/views/ViewControl.h"
#include "shell/ViewLayout.h"

namespace thermopix {

/// Shows the chosen item; opens a menu of all of them, with the chosen one over itself.
class PopupPicker final : public QComboBox, public AccessibleElement {
public:
    explicit PopupPicker(QWidget* parent);

    [[nodiscard]] static Size wantedSize(const ViewNode& node);

    /// Brings items and choice up to date; an open menu stays open as long as the items are the same.
    void show(const ViewNode& node);

    void showPopup() override;
    void hidePopup() override;

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::ComboBox; }
    void describeState(QAccessible::State& state) const override;
    [[nodiscard]] std::optional<QString> accessibleChoice() const override { return currentText(); }
    void openChoices() override { showPopup(); }
    [[nodiscard]] QMenu* openedMenu() override { return menu_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    /// Leaves the wheel to the list that it stands in.
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
    void focusInEvent(QFocusEvent* event) override;

private:
    void markChosen();

    ViewNode node_;
    QPointer<QMenu> menu_;
    bool showsFocus_ = false;
};

/// A popup picker at the trailing end, its title at the leading end.
class LabelledPicker final : public QWidget, public ViewControl, public AccessibleElement {
public:
    LabelledPicker(QWidget* parent, ReportEvent report);

    [[nodiscard]] static Size wantedSize(const ViewNode& node);

    void show(const ViewNode& node) override;
    [[nodiscard]] QWidget& widget() override { return *this; }
    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Pane; }
    [[nodiscard]] PopupPicker& picker() { return *picker_; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void place();

    ViewNode node_;
    /// Names the picker to assistive technology, which hears the chosen item from the picker itself.
    QLabel* title_;
    PopupPicker* picker_;
};

}  // namespace thermopix
