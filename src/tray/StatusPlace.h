#pragma once

#include <optional>

#include "tray/TrayChoices.h"

namespace thermopix {

/// What a session offers to a status item.
struct StatusPlaceOffer {
    /// What the user settled on for this desktop.
    TrayPlace choice = TrayPlace::automatic;
    /// This run was asked for in the terminal.
    bool isTerminalRequested = false;
    bool hasSessionBus = false;
    bool hasDisplay = false;
    /// Something draws items of the tray; none while that is not known.
    std::optional<bool> hasTray;

    friend bool operator==(const StatusPlaceOffer&, const StatusPlaceOffer&) = default;
};

/// Where items are to be held ready. An item in the tray shows up with the next tray; what is beside it stands in until
/// there is one.
struct StatusPlaces {
    bool tray = false;
    bool strip = false;
    bool terminal = false;

    friend bool operator==(const StatusPlaces&, const StatusPlaces&) = default;
};

/// The terminal on request or with nothing else to show it; the tray wherever there is a bus, however late that comes.
[[nodiscard]] StatusPlaces statusPlaces(const StatusPlaceOffer& offer);

/// What a choice means for a readout that stands on a desktop already: it does not move to a terminal.
[[nodiscard]] constexpr TrayPlace choiceOnDesktop(TrayPlace choice) {
    return choice == TrayPlace::terminal ? TrayPlace::automatic : choice;
}

}  // namespace thermopix
