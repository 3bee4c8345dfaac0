#include "platform/qt/views/AccessibleViews.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>

#include "platform/qt/views/ViewControl.h"

namespace thermopix::AccessibleViews {

namespace {

class AccessibleView final : public QAccessibleWidget {
public:
    AccessibleView(QWidget* widget, const AccessibleElement& element)
        : QAccessibleWidget(widget, element.accessibleRole()), element_(element) {}

    [[nodiscard]] QAccessible::Role role() const override { return element_.accessibleRole(); }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        element_.describeState(state);
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (button() != nullptr && widget()->isEnabled()) {
            names.prepend(pressAction());
        }
        return names;
    }

    void doAction(const QString& name) override {
        if (name == pressAction() && button() != nullptr) {
            button()->click();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

private:
    [[nodiscard]] QAbstractButton* button() const { return qobject_cast<QAbstractButton*>(widget()); }

    const AccessibleElement& element_;
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    const auto* element = dynamic_cast<AccessibleElement*>(object);
    return element != nullptr ? new AccessibleView(static_cast<QWidget*>(object), *element) : nullptr;
}

}  // namespace

void install() {
    QAccessible::installFactory(makeInterface);
}

}  // namespace thermopix::AccessibleViews
