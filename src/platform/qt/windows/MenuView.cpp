#include "platform/qt/windows/MenuView.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "platform/qt/drawing/ShellStyle.h"
#include "platform/qt/drawing/Strings.h"
#include "platform/qt/drawing/TextLines.h"

namespace thermopix {

namespace {

bool haveSameShape(const Menu& left, const Menu& right) {
    return std::equal(left.items.begin(), left.items.end(), right.items.begin(), right.items.end(),
                      [](const MenuItem& one, const MenuItem& other) {
                          return one.kind == other.kind && one.identifier == other.identifier;
                      });
}

struct Line {
    /// The menu's own when there is none.
    std::optional<TextStyle> font;
    /// As for what can be chosen when there is none.
    std::optional<ColorRole> color;
};

Line lineOf(const MenuItem& item) {
    if (item.kind == MenuItemKind::sectionHeader) {
        return {TextStyle{.points = 11, .isSemibold = true}, ColorRole::secondary};
    }
    switch (item.textStyle) {
        case MenuTextStyle::standard:
            break;
        case MenuTextStyle::headline:
            return {TextStyle{.points = 15, .isSemibold = true}, ColorRole::primary};
        case MenuTextStyle::caption:
            return {TextStyle{.points = 11}, ColorRole::secondary};
    }
    return {};
}

QKeySequence shortcut(const MenuItem& item) {
    // In the order of `KeyModifiers`.
    static constexpr std::array modifiers{"Ctrl+", "Ctrl+Alt+", "Ctrl+Shift+"};
    return item.key.empty()
               ? QKeySequence()
               : QKeySequence(modifiers.at(static_cast<std::size_t>(item.modifiers)) + qtString(item.key).toUpper());
}

}  // namespace

MenuView::MenuView(QWidget* parent, Chosen chosen, CanDo canDo)
    : QMenu(parent), chosen_(std::move(chosen)), canDo_(std::move(canDo)) {
    connect(this, &QMenu::aboutToShow, this, [this] { refresh(); });
}

void MenuView::showMenu(const Menu& menu) {
    const bool isSame = haveSameShape(shown_, menu);
    shown_ = menu;
    if (!isSame) {
        rebuild();
    }
    refresh();
}

void MenuView::rebuild() {
    clear();
    for (std::size_t i = 0; i < shown_.items.size(); ++i) {
        QAction* action = shown_.items[i].kind == MenuItemKind::separator ? addSeparator() : addAction(QString());
        connect(action, &QAction::triggered, this, [this, i, action] {
            // A check mark is the owner's to set.
            const MenuItem item = shown_.items[i];
            action->setChecked(item.isOn);
            // Assistive technology leaves the menu open.
            close();
            chosen_(item);
        });
    }
}

void MenuView::describe(QAction& action, const MenuItem& item) {
    const Line line = lineOf(item);
    action.setObjectName(qtString(item.identifier));
    action.setText(controlText(item.title));
    action.setProperty(ShellStyle::colorProperty, line.color ? QVariant(static_cast<int>(*line.color)) : QVariant());
    action.setFont(line.font ? TextLines::font(*line.font) : font());
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

void MenuView::refresh() {
    for (std::size_t i = 0; i < shown_.items.size(); ++i) {
        describe(*actions().at(static_cast<qsizetype>(i)), shown_.items[i]);
    }
}

}  // namespace thermopix
