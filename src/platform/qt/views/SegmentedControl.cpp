#include "platform/qt/views/SegmentedControl.h"

#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>

#include "platform/qt/drawing/ControlPainter.h"
#include "platform/qt/drawing/RoleColors.h"
#include "platform/qt/drawing/Strings.h"
#include "platform/qt/drawing/TextLines.h"
#include "platform/qt/drawing/ViewPainter.h"
#include "platform/qt/views/KeyboardFocus.h"

namespace thermopix {

namespace {

constexpr double sidePadding = 16;
constexpr int trackInset = 2;
constexpr double trackRadius = 7;
constexpr double segmentRadius = 5;
constexpr double trackOpacity = 0.07;
constexpr double selectedOutlineOpacity = 0.14;
constexpr double ringOpacity = 0.75;

}  // namespace

Segment::Segment(QWidget* parent) : QRadioButton(parent) {
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QRadioButton::toggled, this, [this] { update(); });
}

void Segment::show(const PickerItem& item, const TextStyle& style) {
    setObjectName(parentWidget()->objectName() + u'.' + qtString(item.value));
    if (item_ != item || style_ != style) {
        item_ = item;
        style_ = style;
        setText(controlText(item.title));
        update();
    }
}

void Segment::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (isChecked()) {
        const double line = 1 / painter.deviceTransform().m11();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(RoleColors::faded(ColorRole::primary, selectedOutlineOpacity, palette()), line));
        painter.setBrush(RoleColors::button(palette()));
        painter.drawRoundedRect(QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2), segmentRadius,
                                segmentRadius);
    }
    ControlPainter::drawLabel(painter, rect(), item_.title, style_, palette(), Qt::AlignHCenter);
    if (hasFocus() && showsFocus_) {
        ViewPainter::drawFocusRing(painter, rect(), segmentRadius,
                                   RoleColors::faded(ColorRole::accent, ringOpacity, palette()));
    }
}

void Segment::focusInEvent(QFocusEvent* event) {
    showsFocus_ = KeyboardFocus::isMeant(*event, showsFocus_);
    QRadioButton::focusInEvent(event);
}

SegmentedControl::SegmentedControl(QWidget* parent, ReportEvent report) : QWidget(parent), report_(std::move(report)) {}

Size SegmentedControl::wantedSize(const ViewNode& node) {
    double widest = 0;
    double height = 0;
    for (const auto& item : node.items) {
        const Size label = TextLines::size(item.title, node.textStyle, TextLines::Wrapping::oneLine, 0);
        widest = std::max(widest, label.width + 2 * sidePadding);
        height = std::max(height, label.height);
    }
    return {widest * static_cast<double>(node.items.size()) + 2 * trackInset,
            ControlPainter::controlHeight(height) + 2 * trackInset};
}

void SegmentedControl::show(const ViewNode& node) {
    setNames(*this, node.identifier, node.accessibility.label.empty() ? node.text : node.accessibility.label);
    const bool sameCount = node.items.size() == segments_.size();
    node_ = node;
    if (!sameCount) {
        makeSegments();
    }
    for (std::size_t i = 0; i < segments_.size(); ++i) {
        const PickerItem& item = node_.items[i];
        segments_[i]->show(item, node_.textStyle);
        if (item.value == node_.selection && !segments_[i]->isChecked()) {
            segments_[i]->setChecked(true);
        }
    }
}

void SegmentedControl::makeSegments() {
    for (auto* segment : segments_) {
        segment->setParent(nullptr);
        segment->deleteLater();
    }
    segments_.clear();
    for (std::size_t i = 0; i < node_.items.size(); ++i) {
        auto* segment = new Segment(this);
        connect(segment, &QRadioButton::toggled, this, [this, i](bool isChosen) {
            if (isChosen) {
                choose(i);
            }
        });
        segment->setVisible(true);
        segments_.push_back(segment);
    }
    resizeEvent(nullptr);
}

void SegmentedControl::choose(std::size_t index) {
    // A choice that comes from the tree itself is no news.
    if (node_.items[index].value != node_.selection) {
        report_({node_.identifier, node_.items[index].value});
    }
}

void SegmentedControl::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(RoleColors::faded(ColorRole::primary, trackOpacity, palette()));
    painter.drawRoundedRect(rect(), trackRadius, trackRadius);
}

void SegmentedControl::resizeEvent(QResizeEvent* /*event*/) {
    const auto count = static_cast<int>(segments_.size());
    const int room = width() - 2 * trackInset;
    for (int i = 0; i < count; ++i) {
        const int left = trackInset + room * i / count;
        const int right = trackInset + room * (i + 1) / count;
        segments_[static_cast<std::size_t>(i)]->setGeometry(left, trackInset, right - left, height() - 2 * trackInset);
    }
}

}  // namespace thermopix
