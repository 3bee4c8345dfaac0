#include "menubar/StatusPlace.h"

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

}  // namespace thermopix
