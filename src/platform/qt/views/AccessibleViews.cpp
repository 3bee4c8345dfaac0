#include "platform/qt/views/AccessibleViews.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>

#include "platform/qt/views/ViewControl.h"

namespace thermopix::AccessibleViews {

namespace {

class AccessibleView final : public QAccessibleWidget {
public:
    AccessibleView(QWidget* widget, AccessibleElement& element)
        : QAccessibleWidget(widget, element.accessibleRole()), element_(element) {}

    [[nodiscard]] QAccessible::Role role() const override { return element_.accessibleRole(); }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        element_.describeState(state);
        return state;
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        const auto choice = element_.accessibleChoice();
        const bool isAsked = kind == QAccessible::Name || kind == QAccessible::Value;
        return choice && isAsked ? *choice : QAccessibleWidget::text(kind);
    }

    [[nodiscard]] int childCount() const override {
        return QAccessibleWidget::childCount() + (element_.openedMenu() != nullptr ? 1 : 0);
    }

    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        return index == QAccessibleWidget::childCount() ? openedMenu() : QAccessibleWidget::child(index);
    }

    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        return child != nullptr && child == openedMenu() ? QAccessibleWidget::childCount()
                                                         : QAccessibleWidget::indexOfChild(child);
    }

    [[nodiscard]] QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (element_.accessibleChoice() && widget()->isEnabled()) {
            names.prepend(showMenuAction());
        }
        if (button() != nullptr && widget()->isEnabled()) {
            names.prepend(pressAction());
        }
        return names;
    }

    void doAction(const QString& name) override {
        if (name == pressAction() && button() != nullptr) {
            button()->click();
        } else if (name == showMenuAction()) {
            element_.openChoices();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

private:
    [[nodiscard]] QAbstractButton* button() const { return qobject_cast<QAbstractButton*>(widget()); }

    [[nodiscard]] QAccessibleInterface* openedMenu() const {
        return QAccessible::queryAccessibleInterface(element_.openedMenu());
    }

    AccessibleElement& element_;
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    auto* element = dynamic_cast<AccessibleElement*>(object);
    return element != nullptr ? new AccessibleView(static_cast<QWidget*>(object), *element) : nullptr;
}

}  // namespace

void install() {
    QAccessible::installFactory(makeInterface);
}

}  // namespace thermopix::AccessibleViews
