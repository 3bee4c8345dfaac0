#include "tray/StatusPlace.h"

namespace thermopix {

StatusPlaces statusPlaces(const StatusPlaceOffer& offer) {
    const bool hasRoom = offer.hasDisplay || (offer.hasSessionBus && offer.hasTrayWatcher);
    if (offer.isTerminalRequested || offer.choice == TrayPlace::terminal || !hasRoom) {
        return {};
    }
    if (!offer.hasSessionBus || (offer.choice == TrayPlace::strip && offer.hasDisplay)) {
        return {.tray = false, .strip = true};
    }
    const bool standsIn = offer.choice != TrayPlace::tray && offer.hasDisplay && offer.hasTray == false;
    return {.tray = true, .strip = standsIn};
}

}  // namespace thermopix
