#include "platform/qt/views/ToggleSwitch.h"

#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "platform/qt/drawing/ControlPainter.h"
#include "platform/qt/drawing/RoleColors.h"
#include "platform/qt/drawing/Strings.h"
#include "platform/qt/drawing/TextLines.h"
#include "platform/qt/drawing/ViewPainter.h"
#include "platform/qt/views/KeyboardFocus.h"

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

}  // namespace

ToggleSwitch::ToggleSwitch(QWidget* parent, ReportEvent report) : QCheckBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QCheckBox::toggled, this, [this, report = std::move(report)](bool isOn) {
        report({node_.identifier, isOn ? "true" : "false"});
    });
}

Size ToggleSwitch::wantedSize(const ViewNode& node) {
    const Size label = TextLines::size(node.text, node.textStyle, TextLines::Wrapping::oneLine, 0);
    return {label.width + labelGap + trackWidth,
            std::max(ControlPainter::controlHeight(label.height), trackHeight + 2 * margin)};
}

QMargins ToggleSwitch::overhang() const {
    return {0, 0, margin, 0};
}

void ToggleSwitch::show(const ViewNode& node) {
    setNames(*this, node.identifier, node.accessibility.label);
    if (isChecked() != node.isOn) {
        const QSignalBlocker silence(this);
        setChecked(node.isOn);
    }
    if (node_ != node) {
        node_ = node;
        setText(controlText(node.text));
        update();
    }
}

void ToggleSwitch::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRectF track(width() - trackWidth - margin, std::floor((height() - trackHeight) / 2), trackWidth,
                       trackHeight);
    ControlPainter::drawLabel(painter, QRectF(0, 0, track.left() - labelGap, height()), node_.text, node_.textStyle,
                              palette(), Qt::AlignLeft);

    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? RoleColors::color(ColorRole::accent, palette())
                                 : RoleColors::faded(ColorRole::primary, offOpacity, palette()));
    painter.drawRoundedRect(track, trackHeight / 2, trackHeight / 2);

    constexpr double diameter = trackHeight - 2 * knobInset;
    const double left = isChecked() ? track.right() - knobInset - diameter : track.left() + knobInset;
    const QRectF knob(left, track.top() + knobInset, diameter, diameter);
    painter.setPen(QPen(QColor(0, 0, 0, 40), 0.5));
    painter.setBrush(Qt::white);
    painter.drawEllipse(knob);

    if (hasFocus() && showsFocus_) {
        ViewPainter::drawFocusRing(painter, track.adjusted(-margin, -margin, margin, margin), trackHeight / 2 + margin,
                                   RoleColors::faded(ColorRole::accent, ringOpacity, palette()));
    }
}

void ToggleSwitch::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
    } else {
        QCheckBox::keyPressEvent(event);
    }
}

void ToggleSwitch::focusInEvent(QFocusEvent* event) {
    showsFocus_ = KeyboardFocus::isMeant(*event, showsFocus_);
    QCheckBox::focusInEvent(event);
}

}  // namespace thermopix
