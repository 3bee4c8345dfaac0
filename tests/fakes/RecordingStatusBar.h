#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/Subscription.h"
#include "shell/StatusItem.h"

namespace thermopix {

/// Keeps every picture and menu that its items were given. Outlives its items.
class RecordingStatusBar final : public StatusBar {
public:
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override {
        ++itemsMade;
        return std::make_unique<Item>(*this);
    }

    /// What the items answer from now on.
    bool hasButton = true;

    std::int64_t itemsMade = 0;
    std::int64_t liveItems = 0;
    std::vector<StatusItemImage> images;
    /// The source of the menu that was attached last.
    MenuSource* menuSource = nullptr;
    /// Every state of that menu, the first one at attachment.
    std::vector<Menu> menus;

private:
    class Item final : public StatusItem {
    public:
        explicit Item(RecordingStatusBar& bar) : bar_(bar) { ++bar_.liveItems; }
        ~Item() override { --bar_.liveItems; }

        [[nodiscard]] bool hasButton() const override { return bar_.hasButton; }
        void setImage(const StatusItemImage& image) override { bar_.images.push_back(image); }
        void setMenu(MenuSource& menu) override {
            bar_.menuSource = &menu;
            menuObserver_ = menu.observe([this](const Menu& state) { bar_.menus.push_back(state); });
        }

    private:
        RecordingStatusBar& bar_;
        Subscription menuObserver_;
    };
};

}  // namespace thermopix
