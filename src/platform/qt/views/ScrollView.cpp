#include <QScrollArea>

#include "platform/qt/views/Controls.h"

namespace thermopix {

namespace {

class ScrollView final : public View<QScrollArea> {
public:
    explicit ScrollView(QWidget* parent) : View(parent) {
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setFocusPolicy(Qt::NoFocus);
        setWidget(new QWidget);
        // The window's ground shows through.
        viewport()->setAutoFillBackground(false);
        QScrollArea::widget()->setAutoFillBackground(false);
    }

    void show(const ViewNode& node) override { setNames(*this, node.identifier, node.accessibility.label); }
};

}  // namespace

ViewControl* Controls::makeScrollView(QWidget* parent, const ReportEvent& /*report*/) {
    return new ScrollView(parent);
}

}  // namespace thermopix
