#pragma once

#include <QPushButton>

#include "platform/qt/views/ViewControl.h"
#include "shell/ViewLayout.h"

namespace thermopix {

class PushButton final : public QPushButton, public ViewControl {
public:
    PushButton(QWidget* parent, ReportEvent report);

    [[nodiscard]] static Size wantedSize(const ViewNode& node);

    void show(const ViewNode& node) override;
    [[nodiscard]] QWidget& widget() override { return *this; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    ViewNode node_;
    bool showsFocus_ = false;
};

}  // namespace thermopix
