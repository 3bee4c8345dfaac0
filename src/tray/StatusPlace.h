#pragma once

#include <optional>

#include "tray/TrayChoices.h"

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

/// What a session with a bus offers to a status item while the program runs.
struct StatusPlaceOffer {
    TrayPlace choice = TrayPlace::automatic;
    /// Something draws items of the tray; none while that is not known.
    std::optional<bool> hasTray;
    bool hasDisplay = false;

    friend bool operator==(const StatusPlaceOffer&, const StatusPlaceOffer&) = default;
};

/// Where items are to be held ready. One in the tray shows up with the next tray; together with it, the strip stands
/// in for a tray that is not there.
struct StatusPlaces {
    bool tray = false;
    bool strip = false;

    friend bool operator==(const StatusPlaces&, const StatusPlaces&) = default;
};

[[nodiscard]] StatusPlaces statusPlaces(const StatusPlaceOffer& offer);

}  // namespace thermopix
