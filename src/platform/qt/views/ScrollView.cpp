#include "platform/qt/views/ScrollView.h"

namespace thermopix {

ScrollView::ScrollView(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    setWidget(new QWidget);
    // The window's ground shows through.
    viewport()->setAutoFillBackground(false);
    QScrollArea::widget()->setAutoFillBackground(false);
}

void ScrollView::show(const ViewNode& node) {
    setNames(*this, node.identifier, node.accessibility.label);
}

}  // namespace thermopix
