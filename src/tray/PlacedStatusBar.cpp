#include "tray/PlacedStatusBar.h"

#include <optional>
#include <utility>

namespace thermopix {

/// Hands everything on to the items of the places, and to those that come later what they have missed.
class PlacedStatusBar::Item final : public StatusItem {
public:
    explicit Item(PlacedStatusBar& bar)
        : bar_(bar), choice_(bar.chosen_.subscribe([this](const StatusPlaces& places) {
              place(tray_, bar_.places_.tray, places.tray);
              place(strip_, bar_.places_.strip, places.strip);
              place(terminal_, bar_.places_.terminal, places.terminal);
          })) {}
    ~Item() override {
        if (bar_.onMenu) {
            bar_.onMenu(nullptr);
        }
    }
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;

    [[nodiscard]] bool hasButton() const override { return true; }

    void setImage(const StatusItemImage& image) override {
        image_ = image;
        forEach([&](StatusItem& item) { item.setImage(image); });
    }

    void setMenu(MenuSource& menu) override {
        menu_ = &menu;
        forEach([&](StatusItem& item) { item.setMenu(menu); });
        if (bar_.onMenu) {
            bar_.onMenu(&menu);
        }
    }

private:
    void place(std::unique_ptr<StatusItem>& item, StatusBar& bar, bool isWanted) const {
        if (!isWanted) {
            item.reset();
        } else if (!item) {
            item = bar.makeStatusItem();
            if (menu_ != nullptr) {
                item->setMenu(*menu_);
            }
            if (image_) {
                item->setImage(*image_);
            }
        }
    }

    template <typename Work>
    void forEach(Work work) const {
        for (const auto* item : {&tray_, &strip_, &terminal_}) {
            if (*item) {
                work(**item);
            }
        }
    }

    PlacedStatusBar& bar_;
    std::optional<StatusItemImage> image_;
    MenuSource* menu_ = nullptr;
    std::unique_ptr<StatusItem> tray_;
    std::unique_ptr<StatusItem> strip_;
    std::unique_ptr<StatusItem> terminal_;
    Subscription choice_;
};

PlacedStatusBar::PlacedStatusBar(Places places, MainLoop& mainLoop)
    : places_(places),
      mainLoop_(mainLoop),
      offers_(places.offer.subscribe([this](const StatusPlaceOffer& offer) { decide(offer); })) {}

std::unique_ptr<StatusItem> PlacedStatusBar::makeStatusItem() {
    return std::make_unique<Item>(*this);
}

void PlacedStatusBar::decide(const StatusPlaceOffer& offer) {
    const StatusPlaces wanted = statusPlaces(offer);
    waiting_.cancel();
    if (wanted == chosen_.value()) {
        return;
    }
    const bool standsIn = wanted.tray && (wanted.strip || wanted.terminal);
    if (standsIn) {
        StatusPlaces meanwhile = chosen_.value();
        meanwhile.tray = true;
        chosen_.send(meanwhile);
        waiting_ = mainLoop_.oneShot(patience, [this, wanted] { chosen_.send(wanted); });
    } else {
        chosen_.send(wanted);
    }
}

}  // namespace thermopix
