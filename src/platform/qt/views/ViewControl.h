#pragma once

#include <QAccessible>
#include <QMargins>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

#include "shell/ViewNode.h"

namespace thermopix {

/// Hears what the user does with a control.
using ReportEvent = std::function<void(const ViewEvent&)>;

/// A widget that shows one node, and can be told to show another of the same kind.
class ViewControl {
public:
    virtual ~ViewControl() = default;

    /// Reports nothing.
    virtual void show(const ViewNode& node) = 0;

    [[nodiscard]] virtual QWidget& widget() = 0;

    /// How far the widget reaches beyond the node's frame, for a focus ring.
    [[nodiscard]] virtual QMargins overhang() const { return {}; }

    /// Where the tab key stops in it, in reading order.
    [[nodiscard]] virtual std::vector<QWidget*> stops() { return {}; }
};

/// A widget of the toolkit as such a control.
template <typename Widget>
class View : public Widget, public ViewControl {
public:
    using Widget::Widget;

    [[nodiscard]] QWidget& widget() final { return *this; }

protected:
    ViewNode node_;
};

/// A widget that speaks for itself to assistive technology where the toolkit would say too little of it.
class AccessibleElement {
public:
    virtual ~AccessibleElement() = default;

    [[nodiscard]] virtual QAccessible::Role accessibleRole() const = 0;
    virtual void describeState(QAccessible::State& /*state*/) const {}

    /// What is chosen in a control that opens a menu of choices; none for other controls. The platform takes it for the
    /// control's name, and a label beside it for what is chosen.
    [[nodiscard]] virtual std::optional<QString> accessibleChoice() const { return std::nullopt; }
    virtual void openChoices() {}
    /// The menu that it has opened, which is a part of it; null while there is none.
    [[nodiscard]] virtual QWidget* openedMenu() { return nullptr; }
};

/// Names the widget to tests and to assistive technology; tells the latter only of a new name.
void setNames(QWidget& widget, const std::string& identifier, const std::string& spoken);

}  // namespace thermopix
