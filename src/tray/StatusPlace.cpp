#include "tray/StatusPlace.h"

namespace thermopix {

StatusPlaces statusPlaces(const StatusPlaceOffer& offer) {
    const bool hasRoom = offer.hasDisplay || offer.hasSessionBus;
    if (offer.isTerminalRequested || offer.choice == TrayPlace::terminal || !hasRoom) {
        return {.tray = false, .strip = false, .terminal = true};
    }
    if (!offer.hasSessionBus || (offer.choice == TrayPlace::strip && offer.hasDisplay)) {
        return {.tray = false, .strip = true, .terminal = false};
    }
    const bool isWaiting = offer.hasTray == false;
    return {.tray = true,
            .strip = isWaiting && offer.hasDisplay && offer.choice != TrayPlace::tray,
            .terminal = isWaiting && !offer.hasDisplay};
}

}  // namespace thermopix
