#pragma once

#include <QScrollArea>

#include "platform/qt/views/ViewControl.h"

namespace thermopix {

/// Scrolls its content vertically; the bar lies over the content's margin.
class ScrollView final : public QScrollArea, public ViewControl {
public:
    explicit ScrollView(QWidget* parent);

    void show(const ViewNode& node) override;
    [[nodiscard]] QWidget& widget() override { return *this; }
};

}  // namespace thermopix
