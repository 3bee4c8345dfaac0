#include <QCheckBox>
#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "platform/qt/drawing/ControlPainter.h"
#include "platform/qt/drawing/RoleColors.h"
#include "platform/qt/drawing/TextLines.h"
#include "platform/qt/drawing/ViewPainter.h"
#include "platform/qt/views/Controls.h"
#include "platform/qt/views/ViewButton.h"

namespace thermopix {

namespace {

constexpr double trackWidth = 32;
constexpr double trackHeight = 18;
constexpr double knobInset = 2;
constexpr double labelGap = 12;
/// Room for the focus ring around the track.
constexpr int margin = 3;
constexpr double offOpacity = 0.2;
constexpr double ringOpacity = 0.6;

class ToggleSwitch final : public ViewButton<QCheckBox> {
public:
    ToggleSwitch(QWidget* parent, const ReportEvent& report) : ViewButton(parent) {
        connect(this, &QCheckBox::toggled, this, [this, report](bool isOn) {
            report({node_.identifier, isOn ? "true" : "false"});
        });
    }

    void show(const ViewNode& node) override {
        const QSignalBlocker silence(this);
        setChecked(node.isOn);
        ViewButton::show(node);
    }

    [[nodiscard]] QMargins overhang() const override { return {0, 0, margin, 0}; }

protected:
    [[nodiscard]] bool hitButton(const QPoint& position) const override { return rect().contains(position); }

    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const QRectF track(width() - trackWidth - margin, std::floor((height() - trackHeight) / 2), trackWidth,
                           trackHeight);
        ControlPainter::drawLabel(painter, QRectF(0, 0, track.left() - labelGap, height()), node_.text, node_.textStyle,
                                  palette(), Qt::AlignLeft);
        ViewPainter::fillRounded(painter, track, trackHeight / 2,
                                 isChecked() ? RoleColors::color(ColorRole::accent, palette())
                                             : RoleColors::faded(ColorRole::primary, offOpacity, palette()));

        constexpr double diameter = trackHeight - 2 * knobInset;
        const double left = isChecked() ? track.right() - knobInset - diameter : track.left() + knobInset;
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(0, 0, 0, 40), 0.5));
        painter.setBrush(Qt::white);
        painter.drawEllipse(QRectF(left, track.top() + knobInset, diameter, diameter));

        if (showsFocus()) {
            ViewPainter::drawFocusRing(painter, track.adjusted(-margin, -margin, margin, margin),
                                       trackHeight / 2 + margin, palette(), ColorRole::accent, ringOpacity);
        }
    }
};

}  // namespace

ViewControl* Controls::makeToggleSwitch(QWidget* parent, const ReportEvent& report) {
    return new ToggleSwitch(parent, report);
}

Size Controls::toggleSwitchSize(const ViewNode& node) {
    const Size label = TextLines::size(node.text, node.textStyle);
    return {label.width + labelGap + trackWidth,
            std::max(ControlPainter::controlHeight(label.height), trackHeight + 2 * margin)};
}

}  // namespace thermopix
