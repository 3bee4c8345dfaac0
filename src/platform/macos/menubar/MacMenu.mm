#include "platform/macos/menubar/MacMenu.h"

#include <cstddef>
#include <utility>

#include "platform/macos/drawing/AttributedText.h"
#include "platform/macos/menubar/KeyEquivalent.h"
#include "platform/macos/menubar/StandardActions.h"
#include "platform/macos/system/Text.h"

/// Target of the items that the program performs itself, and delegate of their menu.
@interface ThermopixMenuTarget : NSObject <NSMenuDelegate>
- (instancetype)initWithPerform:(std::function<void(std::size_t)>)perform willOpen:(std::function<void()>)willOpen;
- (void)performItem:(NSMenuItem*)sender;
@end

@implementation ThermopixMenuTarget {
    std::function<void(std::size_t)> _perform;
    std::function<void()> _willOpen;
}

- (instancetype)initWithPerform:(std::function<void(std::size_t)>)perform willOpen:(std::function<void()>)willOpen {
    self = [super init];
    if (self != nil) {
        _perform = std::move(perform);
        _willOpen = std::move(willOpen);
    }
    return self;
}

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

static_assert(static_cast<NSEventModifierFlags>(ModifierFlag::shift) == NSEventModifierFlagShift);
static_assert(static_cast<NSEventModifierFlags>(ModifierFlag::option) == NSEventModifierFlagOption);
static_assert(static_cast<NSEventModifierFlags>(ModifierFlag::command) == NSEventModifierFlagCommand);

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

// Whether an item for `a` can be brought up to date to show `b`.
bool isSameItem(MenuItem a, const MenuItem& b) {
    a.title = b.title;
    a.isEnabled = b.isEnabled;
    a.isHidden = b.isHidden;
    a.isOn = b.isOn;
    return a == b;
}

}  // namespace

MacMenu::MacMenu(Enabling enabling, Perform perform, std::function<void()> willOpen)
    : enabling_(enabling), perform_(std::move(perform)), menu_([[NSMenu alloc] initWithTitle:@""]) {
    const auto performItem = [this](std::size_t index) {
        // The item may change while it is performed.
        const MenuItem item = shown_.items.at(index);
        perform_(item);
    };
    target_ = [[ThermopixMenuTarget alloc] initWithPerform:performItem willOpen:std::move(willOpen)];
    menu_.delegate = target_;
    menu_.autoenablesItems = enabling == Enabling::byResponder ? YES : NO;
}

MacMenu::~MacMenu() {
    menu_.delegate = nil;
}

void MacMenu::show(const Menu& menu) {
    if (!hasItemsLike(menu)) {
        rebuild(menu);
    } else {
        for (std::size_t i = 0; i < menu.items.size(); ++i) {
            const MenuItem& value = menu.items[i];
            NSMenuItem* item = [menu_ itemAtIndex:static_cast<NSInteger>(i)];
            if (isAction(value) && value != shown_.items[i] && item != nil) {
                apply(value, item);
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

bool MacMenu::hasItemsLike(const Menu& menu) const {
    if (menu.title != shown_.title || menu.items.size() != shown_.items.size()) {
        return false;
    }
    for (std::size_t i = 0; i < menu.items.size(); ++i) {
        const MenuItem& value = menu.items[i];
        const bool isSame = isAction(value) ? isSameItem(shown_.items[i], value) : shown_.items[i] == value;
        if (!isSame) {
            return false;
        }
    }
    return true;
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
    item.keyEquivalentModifierMask = static_cast<NSEventModifierFlags>(modifierMask(value.modifiers));
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
