#pragma once

#include <QRadioButton>
#include <string>
#include <vector>

#include "platform/qt/views/ViewControl.h"
#include "shell/ViewLayout.h"

namespace thermopix {

/// One of the choices of a segmented control.
class Segment final : public QRadioButton {
public:
    explicit Segment(QWidget* parent);

    void show(const PickerItem& item, const TextStyle& style);

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override { return rect().contains(position); }
    void focusInEvent(QFocusEvent* event) override;

private:
    PickerItem item_;
    TextStyle style_;
    bool showsFocus_ = false;
};

/// Choices side by side, as wide as each other; one stop of the tab key, and the arrow keys choose.
class SegmentedControl final : public QWidget, public ViewControl, public AccessibleElement {
public:
    SegmentedControl(QWidget* parent, ReportEvent report);

    [[nodiscard]] static Size wantedSize(const ViewNode& node);

    void show(const ViewNode& node) override;
    [[nodiscard]] QWidget& widget() override { return *this; }
    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Grouping; }
    [[nodiscard]] const std::vector<Segment*>& segments() const { return segments_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void makeSegments();
    void choose(std::size_t index);

    ReportEvent report_;
    ViewNode node_;
    std::vector<Segment*> segments_;
};

}  // namespace thermopix
