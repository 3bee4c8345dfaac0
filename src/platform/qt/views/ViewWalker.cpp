#include "platform/qt/views/ViewWalker.h"

#include <QScrollArea>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/qt/views/PlainButton.h"

namespace thermopix {

namespace {

QRect geometry(const PlacedNode& placed) {
    Frame frame = placed.frame;
    // Controls that draw their node's padding themselves stand on the whole frame, all others inside it.
    const ViewNode& node = *placed.node;
    Controls::Make* make = Controls::makerOf(node);
    if (make != Controls::makePaintedView && make != Controls::makePlainButton) {
        frame = {frame.x + node.padding.leading, frame.y + node.padding.top,
                 frame.width - node.padding.leading - node.padding.trailing,
                 frame.height - node.padding.top - node.padding.bottom};
    }
    const auto whole = [](double value) { return static_cast<int>(std::lround(value)); };
    return {whole(frame.x), whole(frame.y), whole(frame.width), whole(frame.height)};
}

}  // namespace

ViewWalker::ViewWalker(QWidget& host, ReportEvent report) : host_(host), report_(std::move(report)) {}

void ViewWalker::show(const ViewNode& root) {
    const QString focused = host_.focusWidget() != nullptr ? host_.focusWidget()->objectName() : QString();
    hasNewShape_ = false;
    const QSize size = host_.size();
    mount(root_,
          layOut(root, {static_cast<double>(size.width()), static_cast<double>(size.height())}, Controls::measure),
          host_);
    if (hasNewShape_) {
        restoreTabOrder();
        auto* successor = focused.isEmpty() ? nullptr : host_.findChild<QWidget*>(focused);
        if (successor != nullptr && host_.focusWidget() != successor) {
            successor->setFocus(Qt::OtherFocusReason);
        }
    }
}

void ViewWalker::mount(Mounted& mounted, const PlacedNode& placed, QWidget& parent) {
    const ViewNode& node = *placed.node;
    Controls::Make* make = Controls::makerOf(node);
    if (mounted.kind != node.kind || mounted.make != make || mounted.identifier != node.identifier) {
        remove(mounted);
        mounted.kind = node.kind;
        mounted.identifier = node.identifier;
        mounted.make = make;
    }
    if (make == nullptr) {
        mountChildren(mounted, placed, parent);
        return;
    }
    if (mounted.control == nullptr) {
        mounted.control = make(&parent, report_);
        hasNewShape_ = true;
    }
    QWidget& widget = mounted.control->widget();
    mounted.control->show(node);
    widget.setGeometry(geometry(placed).marginsAdded(mounted.control->overhang()));
    if (node.kind == ViewKind::scroll) {
        QWidget& content = *static_cast<QScrollArea&>(widget).widget();
        if (!placed.children.empty()) {
            const Frame& frame = placed.children.front().frame;
            content.resize(static_cast<int>(frame.width), static_cast<int>(frame.height));
        }
        mountChildren(mounted, placed, content);
    } else if (node.kind != ViewKind::button && !node.accessibility.hidesChildren) {
        mountChildren(mounted, placed, parent);
    }
    widget.setVisible(true);
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
        if (child.make == Controls::makePlainButton) {
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

void ViewWalker::collectStops(const Mounted& mounted, std::vector<QWidget*>& stops) {
    if (mounted.control != nullptr) {
        const auto own = mounted.control->stops();
        stops.insert(stops.end(), own.begin(), own.end());
    }
    for (const auto& child : mounted.children) {
        collectStops(child, stops);
    }
}

void ViewWalker::restoreTabOrder() const {
    std::vector<QWidget*> stops;
    collectStops(root_, stops);
    for (std::size_t i = 1; i < stops.size(); ++i) {
        QWidget::setTabOrder(stops[i - 1], stops[i]);
    }
}

}  // namespace thermopix
