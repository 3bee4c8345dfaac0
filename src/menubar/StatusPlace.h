#pragma once

#include "menubar/TrayChoices.h"

namespace thermopix {

/// What a session offers to a status item when the program starts.
struct StatusPlaceFacts {
    /// What the user settled on for this desktop.
    TrayPlace choice = TrayPlace::automatic;
    /// This run was asked for in the terminal.
    bool isTerminalRequested = false;
    bool hasSessionBus = false;
    bool hasDisplay = false;
    /// A watcher of tray items is on the bus.
    bool hasTrayWatcher = false;
};

/// Where the readout appears: on request or with nothing else to show it, in the terminal; where there is a bus with a
/// display or a tray, in the tray, however late that comes. Never `automatic`.
[[nodiscard]] TrayPlace statusPlace(const StatusPlaceFacts& facts);

}  // namespace thermopix
