#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "base/Subscription.h"
#include "platform/macos/menubar/MacMenu.h"
#include "shell/StatusItem.h"

namespace thermopix {

/// An item of the menu bar that shows a template image and opens a menu. Main thread.
class MacStatusItem final : public StatusItem {
public:
    MacStatusItem();
    ~MacStatusItem() override;
    MacStatusItem(const MacStatusItem&) = delete;
    MacStatusItem& operator=(const MacStatusItem&) = delete;

    [[nodiscard]] bool hasButton() const override;
    void setImage(const StatusItemImage& image) override;
    void setMenu(MenuSource& menu) override;

private:
    NSStatusItem* item_;
    std::unique_ptr<MacMenu> menu_;
    Subscription menuChanges_;
};

}  // namespace thermopix
