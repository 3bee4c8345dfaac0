#include "platform/macos/menubar/MacStatusItem.h"

#include "platform/macos/drawing/AppKitCanvas.h"
#include "platform/macos/system/Text.h"

namespace thermopix {

MacStatusItem::MacStatusItem() : item_([NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength]) {
    item_.behavior = 0;
    item_.button.imagePosition = NSImageOnly;
}

MacStatusItem::~MacStatusItem() {
    item_.menu = nil;
    [NSStatusBar.systemStatusBar removeStatusItem:item_];
}

bool MacStatusItem::hasButton() const {
    return item_.button != nil;
}

void MacStatusItem::setImage(const StatusItemImage& image) {
    item_.button.image = nsImage(image.readout);
    item_.button.accessibilityLabel = nsString(image.readout.description.value_or(""));
}

void MacStatusItem::setMenu(MenuSource& menu) {
    menu_ = std::make_unique<MacMenu>(
        MacMenu::Enabling::byValue, [&menu](const MenuItem& item) { menu.perform(item); },
        [&menu] { menu.menuWillOpen(); });
    menuChanges_ = menu.observe([this](const Menu& changed) { menu_->show(changed); });
    item_.menu = menu_->menu();
}

}  // namespace thermopix
