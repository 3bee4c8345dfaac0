#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "environment/Preferences.h"
#include "shell/ViewNode.h"

namespace thermopix {

/// The card that a switch stands on.
enum class ToggleCard { unit, application, updates };

/// A switch of the settings: its row serves the pane that shows it and the view that is told of it.
struct Toggle {
    ToggleCard card;
    std::string_view identifier;
    std::string_view title;
    bool Preferences::*field;
    /// Below the card, with the unit's suffix in place of `{}`; empty for none.
    std::string_view caption;
};

inline constexpr std::array toggles{
    Toggle{ToggleCard::unit, "prefs.unitLetter", "Show the unit letter", &Preferences::showsUnitLetter,
           "Off shows `52°`; on shows `52°{}`. The digit field is a fixed width either way, so the menu bar never "
           "shifts as the number changes."},
    Toggle{ToggleCard::application, "prefs.openAtLogin", "Open at login", &Preferences::openAtLogin, ""},
    Toggle{ToggleCard::application, "prefs.showPrefsOnLaunch", "Open Settings when the app launches",
           &Preferences::showPreferencesOnLaunch, ""},
    Toggle{ToggleCard::application, "prefs.showInDock", "Show in Dock", &Preferences::showInDock,
           "Turning this off takes effect once Settings closes — an app cannot drop its Dock icon while it has a "
           "window on screen without sending that window behind everything else."},
    Toggle{ToggleCard::updates, "prefs.autoUpdate", "Check for updates automatically",
           &Preferences::checkForUpdatesAutomatically, ""},
};

/// The card with its switches and then `more` controls, and their captions below it.
[[nodiscard]] std::vector<ViewNode> toggleCard(ToggleCard which, const Preferences& preferences,
                                               std::vector<ViewNode> more = {});

}  // namespace thermopix
