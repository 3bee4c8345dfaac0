#include "platform/qt/views/PopupPicker.h"

#include <QActionGroup>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "platform/qt/drawing/ControlPainter.h"
#include "platform/qt/drawing/RoleColors.h"
#include "platform/qt/drawing/Strings.h"
#include "platform/qt/drawing/TextLines.h"
#include "platform/qt/views/KeyboardFocus.h"

namespace thermopix {

namespace {

constexpr double leadingPadding = 10;
constexpr double chevronRoom = 24;
constexpr int labelGap = 16;

}  // namespace

PopupPicker::PopupPicker(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
}

Size PopupPicker::wantedSize(const ViewNode& node) {
    double widest = 0;
    double height = 0;
    for (const auto& item : node.items) {
        const Size label = TextLines::size(item.title, node.textStyle, TextLines::Wrapping::oneLine, 0);
        widest = std::max(widest, label.width);
        height = std::max(height, label.height);
    }
    return {leadingPadding + widest + chevronRoom, ControlPainter::controlHeight(height)};
}

void PopupPicker::show(const ViewNode& node) {
    const QSignalBlocker silence(this);
    if (node_.items != node.items) {
        hidePopup();
        clear();
        for (const auto& item : node.items) {
            addItem(qtString(item.title), qtString(item.value));
        }
    }
    node_ = node;
    if (const int chosen = findData(qtString(node.selection)); chosen != currentIndex()) {
        setCurrentIndex(chosen);
    }
    markChosen();
    update();
}

void PopupPicker::showPopup() {
    hidePopup();
    menu_ = new QMenu(this);
    menu_->setAttribute(Qt::WA_DeleteOnClose);
    menu_->setFont(TextLines::font(node_.textStyle));
    auto* choices = new QActionGroup(menu_);
    for (int i = 0; i < count(); ++i) {
        QAction* action = menu_->addAction(withoutMnemonics(itemText(i)));
        action->setCheckable(true);
        action->setChecked(i == currentIndex());
        action->setObjectName(objectName() + u'.' + itemData(i).toString());
        choices->addAction(action);
        connect(action, &QAction::triggered, this, [this, i] {
            // Assistive technology leaves the menu open.
            hidePopup();
            setCurrentIndex(i);
        });
    }
    menu_->setMinimumWidth(width());
    connect(menu_, &QMenu::aboutToHide, this, [this] { update(); });
    QAction* chosen = currentIndex() < 0 ? nullptr : menu_->actions().at(currentIndex());
    // The chosen item comes to lie over this control.
    const int rise = chosen == nullptr ? height() : (height() - menu_->actionGeometry(chosen).height()) / 2;
    menu_->popup(mapToGlobal(QPoint(0, rise)), chosen);
    menu_->setActiveAction(chosen);
    update();
}

void PopupPicker::hidePopup() {
    if (menu_ != nullptr) {
        menu_->close();
    }
}

void PopupPicker::describeState(QAccessible::State& state) const {
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = menu_ != nullptr;
    state.collapsed = menu_ == nullptr;
}

void PopupPicker::markChosen() {
    if (menu_ != nullptr && currentIndex() >= 0) {
        menu_->actions().at(currentIndex())->setChecked(true);
    }
}

void PopupPicker::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    ControlPainter::drawBezel(painter, rect(), palette(), menu_ != nullptr, hasFocus() && showsFocus_);
    ControlPainter::drawLabel(painter, QRectF(leadingPadding, 0, width() - leadingPadding - chevronRoom, height()),
                              currentText().toStdString(), node_.textStyle, palette(), Qt::AlignLeft);
    ControlPainter::drawChevrons(painter, QPointF(width() - chevronRoom / 2, height() / 2.0),
                                 RoleColors::color(ColorRole::secondary, palette()));
}

void PopupPicker::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        showPopup();
    }
}

void PopupPicker::focusInEvent(QFocusEvent* event) {
    showsFocus_ = KeyboardFocus::isMeant(*event, showsFocus_);
    QComboBox::focusInEvent(event);
}

LabelledPicker::LabelledPicker(QWidget* parent, ReportEvent report)
    : QWidget(parent), title_(new QLabel(this)), picker_(new PopupPicker(this)) {
    title_->setTextFormat(Qt::PlainText);
    title_->setBuddy(picker_);
    connect(picker_, &QComboBox::currentIndexChanged, this, [this, report = std::move(report)](int index) {
        report({node_.identifier, picker_->itemData(index).toString().toStdString()});
    });
}

Size LabelledPicker::wantedSize(const ViewNode& node) {
    Size size = PopupPicker::wantedSize(node);
    if (!node.hidesLabel) {
        size.width += TextLines::size(node.text, node.textStyle, TextLines::Wrapping::oneLine, 0).width + labelGap;
    }
    return size;
}

void LabelledPicker::show(const ViewNode& node) {
    setNames(*picker_, node.identifier, node.accessibility.label.empty() ? node.text : node.accessibility.label);
    if (node_ != node) {
        node_ = node;
        title_->setText(qtString(node.text));
        title_->setFont(TextLines::font(node.textStyle));
        place();
    }
    picker_->show(node);
}

void LabelledPicker::resizeEvent(QResizeEvent* /*event*/) {
    place();
}

void LabelledPicker::place() {
    const int wanted = static_cast<int>(std::ceil(PopupPicker::wantedSize(node_).width));
    const int shown = std::min(wanted, width());
    picker_->setGeometry(node_.hidesLabel ? 0 : width() - shown, 0, shown, height());
    title_->setVisible(!node_.hidesLabel);
    title_->setGeometry(0, 0, std::max(0, picker_->x() - labelGap), height());
}

}  // namespace thermopix
