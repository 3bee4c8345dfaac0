#pragma once

#include <QCheckBox>

#include "platform/qt/views/ViewControl.h"
#include "shell/ViewLayout.h"

namespace thermopix {

/// A switch at the trailing end, its title at the leading end; all of it can be clicked.
class ToggleSwitch final : public QCheckBox, public ViewControl {
public:
    ToggleSwitch(QWidget* parent, ReportEvent report);

    [[nodiscard]] static Size wantedSize(const ViewNode& node);

    void show(const ViewNode& node) override;
    [[nodiscard]] QWidget& widget() override { return *this; }
    [[nodiscard]] QMargins overhang() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override { return rect().contains(position); }
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    ViewNode node_;
    bool showsFocus_ = false;
};

}  // namespace thermopix
