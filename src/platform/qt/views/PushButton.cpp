#include "platform/qt/views/PushButton.h"

#include <QKeyEvent>
#include <QPainter>

#include "platform/qt/drawing/ControlPainter.h"
#include "platform/qt/drawing/Strings.h"
#include "platform/qt/drawing/TextLines.h"
#include "platform/qt/views/KeyboardFocus.h"

namespace thermopix {

namespace {

constexpr double sidePadding = 14;

}  // namespace

PushButton::PushButton(QWidget* parent, ReportEvent report) : QPushButton(parent) {
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QPushButton::clicked, this, [this, report = std::move(report)] { report({node_.identifier, {}}); });
}

Size PushButton::wantedSize(const ViewNode& node) {
    const Size label = TextLines::size(node.text, node.textStyle, TextLines::Wrapping::oneLine, 0);
    return {label.width + 2 * sidePadding, ControlPainter::controlHeight(label.height)};
}

void PushButton::show(const ViewNode& node) {
    setNames(*this, node.identifier, node.accessibility.label);
    if (node_ != node) {
        node_ = node;
        setText(controlText(node.text));
        update();
    }
}

void PushButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    ControlPainter::drawBezel(painter, rect(), palette(), isDown(), hasFocus() && showsFocus_);
    ControlPainter::drawLabel(painter, rect(), node_.text, node_.textStyle, palette(), Qt::AlignHCenter);
}

void PushButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
    } else {
        QPushButton::keyPressEvent(event);
    }
}

void PushButton::focusInEvent(QFocusEvent* event) {
    showsFocus_ = KeyboardFocus::isMeant(*event, showsFocus_);
    QPushButton::focusInEvent(event);
}

}  // namespace thermopix
