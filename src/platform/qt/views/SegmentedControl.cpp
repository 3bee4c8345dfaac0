#include <QPainter>
#include <QRadioButton>
#include <algorithm>

#include "platform/qt/drawing/ControlPainter.h"
#include "platform/qt/drawing/RoleColors.h"
#include "platform/qt/drawing/Strings.h"
#include "platform/qt/drawing/TextLines.h"
#include "platform/qt/drawing/ViewPainter.h"
#include "platform/qt/views/Controls.h"
#include "platform/qt/views/Focusable.h"

namespace thermopix {

namespace {

constexpr double sidePadding = 16;
constexpr int trackInset = 2;
constexpr double trackRadius = 7;
constexpr double segmentRadius = 5;
constexpr double trackOpacity = 0.07;
constexpr double selectedOutlineOpacity = 0.14;

/// One of the choices.
class Segment final : public Focusable<QRadioButton> {
public:
    explicit Segment(QWidget* parent) : Focusable(parent) {
        connect(this, &QRadioButton::toggled, this, [this] { update(); });
    }

    void show(const PickerItem& item, const TextStyle& style) {
        setObjectName(parentWidget()->objectName() + u'.' + qtString(item.value));
        if (item_ != item || style_ != style) {
            item_ = item;
            style_ = style;
            setText(controlText(item.title));
            update();
        }
    }

protected:
    [[nodiscard]] bool hitButton(const QPoint& position) const override { return rect().contains(position); }

    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        if (isChecked()) {
            ControlPainter::drawGround(painter, rect(), segmentRadius, palette(), selectedOutlineOpacity);
        }
        ControlPainter::drawLabel(painter, rect(), item_.title, style_, palette(), Qt::AlignHCenter);
        if (showsFocus()) {
            ViewPainter::drawFocusRing(painter, rect(), segmentRadius, palette());
        }
    }

private:
    PickerItem item_;
    TextStyle style_;
};

class SegmentedControl final : public View<QWidget>, public AccessibleElement {
public:
    SegmentedControl(QWidget* parent, const ReportEvent& report) : View(parent), report_(report) {}

    void show(const ViewNode& node) override {
        setNames(*this, node.identifier, node.accessibility.label.empty() ? node.text : node.accessibility.label);
        node_ = node;
        if (node.items.size() != segments_.size()) {
            makeSegments();
        }
        for (std::size_t i = 0; i < segments_.size(); ++i) {
            const PickerItem& item = node_.items[i];
            segments_[i]->show(item, node_.textStyle);
            if (item.value == node_.selection) {
                segments_[i]->setChecked(true);
            }
        }
    }

    [[nodiscard]] std::vector<QWidget*> stops() override { return {segments_.begin(), segments_.end()}; }
    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Grouping; }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        ViewPainter::fillRounded(painter, rect(), trackRadius,
                                 RoleColors::faded(ColorRole::primary, trackOpacity, palette()));
    }

    void resizeEvent(QResizeEvent* /*event*/) override { place(); }

private:
    void makeSegments() {
        for (auto* segment : segments_) {
            segment->setParent(nullptr);
            segment->deleteLater();
        }
        segments_.clear();
        for (std::size_t i = 0; i < node_.items.size(); ++i) {
            auto* segment = segments_.emplace_back(new Segment(this));
            connect(segment, &QRadioButton::toggled, this, [this, i](bool isChosen) {
                // A choice that comes from the tree itself is no news.
                if (isChosen && node_.items[i].value != node_.selection) {
                    report_({node_.identifier, node_.items[i].value});
                }
            });
            segment->setVisible(true);
        }
        place();
    }

    void place() {
        const auto count = static_cast<int>(segments_.size());
        const int room = width() - 2 * trackInset;
        for (int i = 0; i < count; ++i) {
            const int left = trackInset + room * i / count;
            const int right = trackInset + room * (i + 1) / count;
            segments_[static_cast<std::size_t>(i)]->setGeometry(left, trackInset, right - left,
                                                                height() - 2 * trackInset);
        }
    }

    ReportEvent report_;
    std::vector<Segment*> segments_;
};

}  // namespace

ViewControl* Controls::makeSegmentedControl(QWidget* parent, const ReportEvent& report) {
    return new SegmentedControl(parent, report);
}

Size Controls::segmentedControlSize(const ViewNode& node) {
    const Size title = largestTitle(node);
    return {(title.width + 2 * sidePadding) * static_cast<double>(node.items.size()) + 2 * trackInset,
            ControlPainter::controlHeight(title.height) + 2 * trackInset};
}

}  // namespace thermopix
