#include <QPainter>
#include <QPushButton>

#include "platform/qt/drawing/ControlPainter.h"
#include "platform/qt/drawing/TextLines.h"
#include "platform/qt/views/Controls.h"
#include "platform/qt/views/ViewButton.h"

namespace thermopix {

namespace {

constexpr double sidePadding = 14;

class PushButton final : public ViewButton<QPushButton> {
public:
    PushButton(QWidget* parent, const ReportEvent& report) : ViewButton(parent) {
        setAttribute(Qt::WA_Hover);
        connect(this, &QPushButton::clicked, this, [this, report] { report({node_.identifier, {}}); });
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        ControlPainter::drawBezel(painter, rect(), palette(), isDown(), showsFocus());
        ControlPainter::drawLabel(painter, rect(), node_.text, node_.textStyle, palette(), Qt::AlignHCenter);
    }
};

}  // namespace

ViewControl* Controls::makePushButton(QWidget* parent, const ReportEvent& report) {
    return new PushButton(parent, report);
}

Size Controls::pushButtonSize(const ViewNode& node) {
    const Size label = TextLines::size(node.text, node.textStyle);
    return {label.width + 2 * sidePadding, ControlPainter::controlHeight(label.height)};
}

}  // namespace thermopix
