#include "platform/macos/menubar/MacMenu.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/macos/drawing/AttributedText.h"
#include "platform/macos/menubar/StandardActions.h"
#include "platform/macos/system/Text.h"

/// Target of the items that the program performs itself, and delegate of their menu.
@interface ThermopixMenuTarget : NSObject <NSMenuDelegate>
@property(nonatomic) std::function<void(std::size_t)> perform;
@property(nonatomic) std::function<void()> willOpen;
- (void)performItem:(NSMenuItem*)sender;
@end

@implementation ThermopixMenuTarget

- (void)performItem:(NSMenuItem*)sender {
    _perform(static_cast<std::size_t>(sender.tag));
}

- (void)menuWillOpen:(NSMenu*)__unused menu {
    if (_willOpen) {
        _willOpen();
    }
}

@end

namespace thermopix {

namespace {

constexpr NSEventModifierFlags modifierFlags(KeyModifiers modifiers) {
    switch (modifiers) {
        case KeyModifiers::command:
            return NSEventModifierFlagCommand;
        case KeyModifiers::commandOption:
            return NSEventModifierFlagCommand | NSEventModifierFlagOption;
        case KeyModifiers::commandShift:
            return NSEventModifierFlagCommand | NSEventModifierFlagShift;
    }
    return 0;
}
static_assert(modifierFlags(KeyModifiers::command) == 0x100000);
static_assert(modifierFlags(KeyModifiers::commandOption) == 0x180000);
static_assert(modifierFlags(KeyModifiers::commandShift) == 0x120000);

constexpr CGFloat headlinePoints = 15;
constexpr CGFloat captionPoints = 11;
constexpr CGFloat symbolPoints = 13;

NSAttributedString* titleOf(const MenuItem& value) {
    switch (value.textStyle) {
        case MenuTextStyle::headline:
            return attributedText(value.title, {.font = [NSFont monospacedDigitSystemFontOfSize:headlinePoints
                                                                                         weight:NSFontWeightSemibold],
                                                .color = NSColor.labelColor});
        case MenuTextStyle::caption:
            return attributedText(
                value.title, {.font = [NSFont systemFontOfSize:captionPoints], .color = NSColor.secondaryLabelColor});
        case MenuTextStyle::standard:
            break;
    }
    return nil;
}

NSImage* symbolImage(const std::string& name) {
    if (name.empty()) {
        return nil;
    }
    NSImageSymbolConfiguration* configuration =
        [NSImageSymbolConfiguration configurationWithPointSize:symbolPoints weight:NSFontWeightMedium];
    NSImage* image = [[NSImage imageWithSystemSymbolName:nsString(name)
                                accessibilityDescription:nil] imageWithSymbolConfiguration:configuration];
    [image setTemplate:YES];
    return image;
}

NSMenuItem* makeSectionHeader(const MenuItem& value) {
    NSString* title = nsString(value.title);
    if (@available(macOS 14, *)) {
        return [NSMenuItem sectionHeaderWithTitle:title];
    }
    NSMenuItem* header = [[NSMenuItem alloc] initWithTitle:title action:nullptr keyEquivalent:@""];
    header.enabled = NO;
    header.attributedTitle = attributedText(value.title, {.font = [NSFont systemFontOfSize:NSFont.smallSystemFontSize
                                                                                    weight:NSFontWeightSemibold],
                                                          .color = NSColor.secondaryLabelColor});
    return header;
}

// Everything of an item that may change while it stands in its menu.
void apply(const MenuItem& value, NSMenuItem* item) {
    item.title = nsString(value.title);
    item.attributedTitle = titleOf(value);
    item.enabled = value.isEnabled ? YES : NO;
    item.hidden = value.isHidden ? YES : NO;
    item.state = value.isOn ? NSControlStateValueOn : NSControlStateValueOff;
}

bool isAction(const MenuItem& value) {
    return value.kind == MenuItemKind::action || value.kind == MenuItemKind::information;
}

// Whether an item that shows `shown` can be brought up to date to show `value`.
bool isSameItem(MenuItem shown, const MenuItem& value) {
    if (isAction(value)) {
        shown.title = value.title;
        shown.isEnabled = value.isEnabled;
        shown.isHidden = value.isHidden;
        shown.isOn = value.isOn;
    }
    return shown == value;
}

}  // namespace

MacMenu::MacMenu(Enabling enabling, Perform perform, std::function<void()> willOpen)
    : enabling_(enabling), perform_(std::move(perform)), menu_([[NSMenu alloc] initWithTitle:@""]) {
    target_ = [[ThermopixMenuTarget alloc] init];
    target_.perform = [this](std::size_t index) {
        // The item may change while it is performed.
        const MenuItem item = shown_.items.at(index);
        perform_(item);
    };
    target_.willOpen = std::move(willOpen);
    menu_.delegate = target_;
    menu_.autoenablesItems = enabling == Enabling::byResponder ? YES : NO;
}

MacMenu::~MacMenu() {
    menu_.delegate = nil;
}

void MacMenu::show(const Menu& menu) {
    const auto& items = shown_.items;
    const bool hasItems = shown_.title == menu.title &&
                          std::equal(items.begin(), items.end(), menu.items.begin(), menu.items.end(), isSameItem);
    if (!hasItems) {
        rebuild(menu);
    } else {
        for (std::size_t i = 0; i < menu.items.size(); ++i) {
            NSMenuItem* item = [menu_ itemAtIndex:static_cast<NSInteger>(i)];
            if (menu.items[i] != shown_.items[i] && item != nil) {
                apply(menu.items[i], item);
            }
        }
    }
    shown_ = menu;
}

NSMenu* MacMenu::windowsMenu() const {
    for (const auto& submenu : submenus_) {
        if (submenu->shown_.listsWindows) {
            return submenu->menu_;
        }
    }
    return nil;
}

void MacMenu::rebuild(const Menu& menu) {
    [menu_ removeAllItems];
    submenus_.clear();
    menu_.title = nsString(menu.title);
    for (std::size_t i = 0; i < menu.items.size(); ++i) {
        [menu_ addItem:makeItem(menu.items[i], i)];
    }
}

NSMenuItem* MacMenu::makeItem(const MenuItem& value, std::size_t index) {
    switch (value.kind) {
        case MenuItemKind::separator:
            return [NSMenuItem separatorItem];
        case MenuItemKind::sectionHeader:
            return makeSectionHeader(value);
        case MenuItemKind::submenu: {
            submenus_.push_back(std::make_unique<MacMenu>(enabling_, perform_));
            submenus_.back()->show(value.submenu);
            NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:nsString(value.title)
                                                          action:nullptr
                                                   keyEquivalent:@""];
            item.submenu = submenus_.back()->menu();
            return item;
        }
        case MenuItemKind::action:
        case MenuItemKind::information:
            break;
    }
    return makeActionItem(value, index);
}

NSMenuItem* MacMenu::makeActionItem(const MenuItem& value, std::size_t index) {
    NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:nsString(value.title)
                                                  action:standardAction(value.action)
                                           keyEquivalent:nsString(value.key)];
    if (value.action != MenuAction::none && item.action == nullptr) {
        item.target = target_;
        item.action = @selector(performItem:);
        item.tag = static_cast<NSInteger>(index);
    }
    item.keyEquivalentModifierMask = modifierFlags(value.modifiers);
    item.image = symbolImage(value.symbol);
    if (!value.identifier.empty()) {
        item.identifier = nsString(value.identifier);
        item.accessibilityIdentifier = nsString(value.identifier);
    }
    if (value.representedValue) {
        item.representedObject = nsString(*value.representedValue);
    }
    apply(value, item);
    return item;
}

}  // namespace thermopix
