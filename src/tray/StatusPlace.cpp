#include "tray/StatusPlace.h"

namespace thermopix {

TrayPlace statusPlace(const StatusPlaceFacts& facts) {
    if (facts.isTerminalRequested || facts.choice == TrayPlace::terminal) {
        return TrayPlace::terminal;
    }
    if (facts.choice == TrayPlace::strip && facts.hasDisplay) {
        return TrayPlace::strip;
    }
    if (facts.hasSessionBus && (facts.hasDisplay || facts.hasTrayWatcher)) {
        return TrayPlace::tray;
    }
    return facts.hasDisplay ? TrayPlace::strip : TrayPlace::terminal;
}

StatusPlaces statusPlaces(const StatusPlaceOffer& offer) {
    if (offer.choice == TrayPlace::strip && offer.hasDisplay) {
        return {.tray = false, .strip = true};
    }
    const bool standsIn = offer.choice != TrayPlace::tray && offer.hasDisplay && offer.hasTray == false;
    return {.tray = true, .strip = standsIn};
}

}  // namespace thermopix
