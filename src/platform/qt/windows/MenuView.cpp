#include "platform/qt/windows/MenuView.h"

#include <algorithm>
#include <utility>

#include "platform/qt/drawing/ShellStyle.h"
#include "platform/qt/drawing/Strings.h"

namespace thermopix {

namespace {

bool haveSameShape(const Menu& left, const Menu& right) {
    return std::equal(left.items.begin(), left.items.end(), right.items.begin(), right.items.end(),
                      [](const MenuItem& one, const MenuItem& other) {
                          return one.kind == other.kind && one.identifier == other.identifier;
                      });
}

ShellStyle::MenuLine lineOf(const MenuItem& item) {
    if (item.kind == MenuItemKind::sectionHeader) {
        return ShellStyle::sectionLine;
    }
    switch (item.textStyle) {
        case MenuTextStyle::standard:
            return ShellStyle::standardLine;
        case MenuTextStyle::headline:
            return ShellStyle::headlineLine;
        case MenuTextStyle::caption:
            return ShellStyle::captionLine;
    }
    return ShellStyle::standardLine;
}

}  // namespace

MenuView::MenuView(QMenu& menu, Chosen chosen, CanDo canDo)
    : menu_(menu), chosen_(std::move(chosen)), canDo_(std::move(canDo)) {
    QObject::connect(&menu_, &QMenu::aboutToShow, &menu_, [this] { refreshEnabled(); });
}

void MenuView::show(const Menu& menu) {
    const bool isSame = haveSameShape(shown_, menu);
    shown_ = menu;
    if (!isSame) {
        rebuild();
    }
    for (std::size_t i = 0; i < actions_.size(); ++i) {
        describe(*actions_[i], shown_.items[i]);
    }
}

void MenuView::rebuild() {
    menu_.clear();
    actions_.clear();
    for (std::size_t i = 0; i < shown_.items.size(); ++i) {
        QAction* action =
            shown_.items[i].kind == MenuItemKind::separator ? menu_.addSeparator() : menu_.addAction(QString());
        QObject::connect(action, &QAction::triggered, &menu_, [this, i] {
            // A check mark is the owner's to set.
            const MenuItem item = shown_.items[i];
            actions_[i]->setChecked(item.isOn);
            if (menu_.isVisible()) {
                // Assistive technology leaves the menu open.
                menu_.close();
            }
            chosen_(item);
        });
        actions_.push_back(action);
    }
}

void MenuView::describe(QAction& action, const MenuItem& item) {
    const auto line = lineOf(item);
    action.setObjectName(qtString(item.identifier));
    action.setText(controlText(item.title));
    action.setProperty(ShellStyle::lineProperty, static_cast<int>(line));
    action.setFont(ShellStyle::lineFont(line, menu_.font()));
    action.setVisible(!item.isHidden);
    action.setEnabled(item.isEnabled && (item.kind != MenuItemKind::action || !canDo_ || canDo_(item)));
    // Items that stand for a value are marked when it is the chosen one.
    action.setCheckable(item.representedValue.has_value() || item.isOn);
    action.setChecked(item.isOn);
    action.setShortcut(shortcut(item));
    if (!item.symbol.empty()) {
        action.setProperty(ShellStyle::symbolProperty, qtString(item.symbol));
    }
}

void MenuView::refreshEnabled() {
    for (std::size_t i = 0; i < actions_.size(); ++i) {
        describe(*actions_[i], shown_.items[i]);
    }
}

QKeySequence MenuView::shortcut(const MenuItem& item) {
    if (item.key.empty()) {
        return {};
    }
    const QString key = qtString(item.key).toUpper();
    switch (item.modifiers) {
        case KeyModifiers::command:
            return {QStringLiteral("Ctrl+") + key};
        case KeyModifiers::commandOption:
            return {QStringLiteral("Ctrl+Alt+") + key};
        case KeyModifiers::commandShift:
            return {QStringLiteral("Ctrl+Shift+") + key};
    }
    return {};
}

}  // namespace thermopix
