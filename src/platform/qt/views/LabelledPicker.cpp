#include <QActionGroup>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "platform/qt/drawing/ControlPainter.h"
#include "platform/qt/drawing/RoleColors.h"
#include "platform/qt/drawing/Strings.h"
#include "platform/qt/drawing/TextLines.h"
#include "platform/qt/views/Controls.h"
#include "platform/qt/views/Focusable.h"

namespace thermopix {

namespace {

constexpr double leadingPadding = 10;
constexpr double chevronRoom = 24;
constexpr int labelGap = 16;

Size pickerSize(const ViewNode& node) {
    const Size title = Controls::largestTitle(node);
    return {leadingPadding + title.width + chevronRoom, ControlPainter::controlHeight(title.height)};
}

/// Shows the chosen item; opens a menu of all of them, with the chosen one over itself.
class PopupPicker final : public Focusable<QComboBox>, public AccessibleElement {
public:
    using Focusable::Focusable;

    /// Brings items and choice up to date; an open menu stays open as long as the items are the same.
    void show(const ViewNode& node) {
        const QSignalBlocker silence(this);
        if (node_.items != node.items) {
            hidePopup();
            clear();
            for (const auto& item : node.items) {
                addItem(qtString(item.title), qtString(item.value));
            }
        }
        node_ = node;
        setCurrentIndex(findData(qtString(node.selection)));
        if (menu_ != nullptr && currentIndex() >= 0) {
            menu_->actions().at(currentIndex())->setChecked(true);
        }
        update();
    }

    void showPopup() override {
        hidePopup();
        menu_ = new QMenu(this);
        menu_->setAttribute(Qt::WA_DeleteOnClose);
        menu_->setFont(TextLines::font(node_.textStyle));
        auto* choices = new QActionGroup(menu_);
        for (int i = 0; i < count(); ++i) {
            QAction* action = choices->addAction(menu_->addAction(withoutMnemonics(itemText(i))));
            action->setCheckable(true);
            action->setChecked(i == currentIndex());
            action->setObjectName(objectName() + u'.' + itemData(i).toString());
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

    void hidePopup() override {
        if (menu_ != nullptr) {
            menu_->close();
        }
    }

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::ComboBox; }
    void describeState(QAccessible::State& state) const override {
        state.hasPopup = true;
        state.expandable = true;
        state.expanded = menu_ != nullptr;
        state.collapsed = menu_ == nullptr;
    }
    [[nodiscard]] std::optional<QString> accessibleChoice() const override { return currentText(); }
    void openChoices() override { showPopup(); }
    [[nodiscard]] QWidget* openedMenu() override { return menu_; }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        ControlPainter::drawBezel(painter, rect(), palette(), menu_ != nullptr, showsFocus());
        ControlPainter::drawLabel(painter, QRectF(leadingPadding, 0, width() - leadingPadding - chevronRoom, height()),
                                  currentText().toStdString(), node_.textStyle, palette(), Qt::AlignLeft);
        ControlPainter::drawChevrons(painter, QPointF(width() - chevronRoom / 2, height() / 2.0),
                                     RoleColors::color(ColorRole::secondary, palette()));
    }

    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton) {
            showPopup();
        }
    }

    /// Leaves the wheel to the list that it stands in.
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }

private:
    ViewNode node_;
    QPointer<QMenu> menu_;
};

class LabelledPicker final : public View<QWidget>, public AccessibleElement {
public:
    LabelledPicker(QWidget* parent, const ReportEvent& report)
        : View(parent), title_(new QLabel(this)), picker_(new PopupPicker(this)) {
        title_->setTextFormat(Qt::PlainText);
        title_->setBuddy(picker_);
        connect(picker_, &QComboBox::currentIndexChanged, this, [this, report](int index) {
            report({node_.identifier, picker_->itemData(index).toString().toStdString()});
        });
    }

    void show(const ViewNode& node) override {
        setNames(*picker_, node.identifier, node.accessibility.label.empty() ? node.text : node.accessibility.label);
        if (node_ != node) {
            node_ = node;
            title_->setText(qtString(node.text));
            title_->setFont(TextLines::font(node.textStyle));
            place();
        }
        picker_->show(node);
    }

    [[nodiscard]] std::vector<QWidget*> stops() override { return {picker_}; }
    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Pane; }

protected:
    void resizeEvent(QResizeEvent* /*event*/) override { place(); }

private:
    void place() {
        const int wanted = static_cast<int>(std::ceil(pickerSize(node_).width));
        const int shown = std::min(wanted, width());
        picker_->setGeometry(node_.hidesLabel ? 0 : width() - shown, 0, shown, height());
        title_->setVisible(!node_.hidesLabel);
        title_->setGeometry(0, 0, std::max(0, picker_->x() - labelGap), height());
    }

    /// Names the picker to assistive technology, which hears the chosen item from the picker itself.
    QLabel* title_;
    PopupPicker* picker_;
};

}  // namespace

ViewControl* Controls::makeLabelledPicker(QWidget* parent, const ReportEvent& report) {
    return new LabelledPicker(parent, report);
}

Size Controls::labelledPickerSize(const ViewNode& node) {
    Size size = pickerSize(node);
    if (!node.hidesLabel) {
        size.width += TextLines::size(node.text, node.textStyle).width + labelGap;
    }
    return size;
}

}  // namespace thermopix
