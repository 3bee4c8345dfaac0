#include "platform/qt/views/ViewWalker.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/qt/views/LeafSizes.h"
#include "platform/qt/views/PaintedView.h"
#include "platform/qt/views/PlainButton.h"
#include "platform/qt/views/PopupPicker.h"
#include "platform/qt/views/PushButton.h"
#include "platform/qt/views/ScrollView.h"
#include "platform/qt/views/SegmentedControl.h"
#include "platform/qt/views/ToggleSwitch.h"

namespace thermopix {

namespace {

QRect geometry(const PlacedNode& placed) {
    Frame frame = placed.frame;
    // Controls that draw their node's padding themselves stand on the whole frame, all others inside it.
    const ViewNode& node = *placed.node;
    const bool drawsPadding = node.kind == ViewKind::stack || node.kind == ViewKind::text ||
                              node.kind == ViewKind::symbol || node.kind == ViewKind::pixelImage ||
                              node.kind == ViewKind::divider ||
                              (node.kind == ViewKind::button && !node.children.empty());
    if (!drawsPadding) {
        frame = {frame.x + node.padding.leading, frame.y + node.padding.top,
                 frame.width - node.padding.leading - node.padding.trailing,
                 frame.height - node.padding.top - node.padding.bottom};
    }
    const auto whole = [](double value) { return static_cast<int>(std::lround(value)); };
    return {whole(frame.x), whole(frame.y), whole(frame.width), whole(frame.height)};
}

bool isSeen(const ViewNode& stack) {
    return stack.background != Background{} || !stack.identifier.empty() || stack.accessibility != Accessibility{};
}

}  // namespace

ViewWalker::ViewWalker(QWidget& host, ReportEvent report) : host_(host), report_(std::move(report)) {}

void ViewWalker::show(const ViewNode& root) {
    const QString focused = host_.focusWidget() != nullptr ? host_.focusWidget()->objectName() : QString();
    hasNewShape_ = false;
    const QSize size = host_.size();
    mount(root_,
          layOut(root, {static_cast<double>(size.width()), static_cast<double>(size.height())}, LeafSizes::measure),
          host_);
    if (hasNewShape_) {
        restoreTabOrder();
        auto* successor = focused.isEmpty() ? nullptr : host_.findChild<QWidget*>(focused);
        if (successor != nullptr && host_.focusWidget() != successor) {
            successor->setFocus(Qt::OtherFocusReason);
        }
    }
}

ViewWalker::Part ViewWalker::partFor(const ViewNode& node) {
    switch (node.kind) {
        case ViewKind::stack:
            return isSeen(node) ? Part::painted : Part::nothing;
        case ViewKind::text:
        case ViewKind::symbol:
        case ViewKind::pixelImage:
        case ViewKind::divider:
            return Part::painted;
        case ViewKind::button:
            return node.children.empty() ? Part::pushButton : Part::plainButton;
        case ViewKind::toggle:
            return Part::toggle;
        case ViewKind::picker:
            return node.pickerStyle == PickerStyle::segmented ? Part::segments : Part::popup;
        case ViewKind::spacer:
            return Part::nothing;
        case ViewKind::scroll:
            return Part::scroll;
    }
    return Part::nothing;
}

ViewControl* ViewWalker::makeControl(Part part, QWidget& parent) const {
    switch (part) {
        case Part::nothing:
            return nullptr;
        case Part::painted:
            return new PaintedView(&parent);
        case Part::plainButton:
            return new PlainButton(&parent, report_);
        case Part::pushButton:
            return new PushButton(&parent, report_);
        case Part::toggle:
            return new ToggleSwitch(&parent, report_);
        case Part::segments:
            return new SegmentedControl(&parent, report_);
        case Part::popup:
            return new LabelledPicker(&parent, report_);
        case Part::scroll:
            return new ScrollView(&parent);
    }
    return nullptr;
}

void ViewWalker::mount(Mounted& mounted, const PlacedNode& placed, QWidget& parent) {
    const ViewNode& node = *placed.node;
    const Part part = partFor(node);
    if (mounted.kind != node.kind || mounted.part != part || mounted.identifier != node.identifier) {
        remove(mounted);
        mounted.kind = node.kind;
        mounted.part = part;
        mounted.identifier = node.identifier;
    }
    if (mounted.control == nullptr && part != Part::nothing) {
        mounted.control = makeControl(part, parent);
        hasNewShape_ = true;
    }
    if (mounted.control != nullptr) {
        mounted.control->show(node);
        mounted.control->widget().setGeometry(geometry(placed).marginsAdded(mounted.control->overhang()));
    }
    if (part == Part::scroll) {
        auto& content = *static_cast<ScrollView*>(mounted.control)->QScrollArea::widget();
        if (!placed.children.empty()) {
            const Frame& frame = placed.children.front().frame;
            content.resize(static_cast<int>(frame.width), static_cast<int>(frame.height));
        }
        mountChildren(mounted, placed, content);
    } else if (part != Part::plainButton && !node.accessibility.hidesChildren) {
        mountChildren(mounted, placed, parent);
    }
    if (mounted.control != nullptr) {
        mounted.control->widget().setVisible(true);
    }
}

void ViewWalker::mountChildren(Mounted& mounted, const PlacedNode& placed, QWidget& parent) {
    for (std::size_t i = placed.children.size(); i < mounted.children.size(); ++i) {
        remove(mounted.children[i]);
    }
    mounted.children.resize(placed.children.size());
    for (std::size_t i = 0; i < placed.children.size(); ++i) {
        mount(mounted.children[i], placed.children[i], parent);
    }
    joinChoices(mounted);
}

void ViewWalker::remove(Mounted& mounted) {
    for (auto& child : mounted.children) {
        remove(child);
    }
    if (mounted.control != nullptr) {
        // It may be this control that is reporting just now.
        QWidget& widget = mounted.control->widget();
        widget.setParent(nullptr);
        widget.deleteLater();
        hasNewShape_ = true;
    }
    mounted = {};
}

void ViewWalker::joinChoices(const Mounted& stack) {
    std::vector<PlainButton*> buttons;
    for (const auto& child : stack.children) {
        if (child.part == Part::plainButton) {
            buttons.push_back(static_cast<PlainButton*>(child.control));
        }
    }
    const bool isChoice =
        std::any_of(buttons.begin(), buttons.end(), [](const PlainButton* button) { return button->isSelected(); });
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        buttons[i]->setNeighbors(i > 0 ? buttons[i - 1] : nullptr, i + 1 < buttons.size() ? buttons[i + 1] : nullptr,
                                 isChoice ? PlainButton::Purpose::choice : PlainButton::Purpose::action);
    }
}

void ViewWalker::collectFocusable(const Mounted& mounted, std::vector<QWidget*>& widgets) {
    switch (mounted.part) {
        case Part::plainButton:
        case Part::pushButton:
        case Part::toggle:
            widgets.push_back(&mounted.control->widget());
            break;
        case Part::segments:
            for (auto* segment : static_cast<SegmentedControl*>(mounted.control)->segments()) {
                widgets.push_back(segment);
            }
            break;
        case Part::popup:
            widgets.push_back(&static_cast<LabelledPicker*>(mounted.control)->picker());
            break;
        default:
            break;
    }
    for (const auto& child : mounted.children) {
        collectFocusable(child, widgets);
    }
}

void ViewWalker::restoreTabOrder() const {
    std::vector<QWidget*> widgets;
    collectFocusable(root_, widgets);
    for (std::size_t i = 1; i < widgets.size(); ++i) {
        QWidget::setTabOrder(widgets[i - 1], widgets[i]);
    }
}

}  // namespace thermopix
