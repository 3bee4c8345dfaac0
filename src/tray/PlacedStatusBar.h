#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "base/Observers.h"
#include "base/Published.h"
#include "shell/StatusItem.h"
#include "system/MainLoop.h"
#include "tray/StatusPlace.h"

namespace thermopix {

/// One status item in the tray or, where there is none, in the strip or the terminal: the same picture and menu go to
/// whichever the session has room for. Main thread.
class PlacedStatusBar final : public StatusBar {
public:
    /// How long a tray may be away, as when a panel restarts, before something else stands in for it.
    static constexpr std::chrono::seconds patience{2};

    struct Places {
        StatusBar& tray;
        StatusBar& strip;
        StatusBar& terminal;
        /// Tells what the session offers, at once and whenever it has changed.
        Published<StatusPlaceOffer>& offer;
    };

    /// All outlive the bar, which outlives its item.
    PlacedStatusBar(Places places, MainLoop& mainLoop);
    PlacedStatusBar(const PlacedStatusBar&) = delete;
    PlacedStatusBar& operator=(const PlacedStatusBar&) = delete;

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override;

    /// Called with the menu of the item when that gets one, and with null when the item goes.
    std::function<void(MenuSource*)> onMenu;

private:
    class Item;

    void decide(const StatusPlaceOffer& offer);

    Places places_;
    MainLoop& mainLoop_;
    Published<StatusPlaces> chosen_{StatusPlaces{}};
    Subscription waiting_;
    Subscription offers_;
};

}  // namespace thermopix
