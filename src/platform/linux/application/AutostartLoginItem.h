#pragma once

#include <optional>
#include <string>
#include <vector>

#include "system/LoginItemManaging.h"

namespace thermopix {

/// Opens the program at login through an XDG autostart entry (XDG autostart 0.5).
/// Keeps no state: the files are judged each time as the session would judge them.
class AutostartLoginItem final : public LoginItemManaging {
public:
    struct Places {
        /// `$XDG_CONFIG_HOME`, where the user's own entries are.
        std::string userFolder;
        /// `$XDG_CONFIG_DIRS`, most important first.
        std::vector<std::string> systemFolders;
        /// `$XDG_CURRENT_DESKTOP`.
        std::vector<std::string> currentDesktops;
        /// The program that the entry starts, absolute.
        std::string program;
    };

    explicit AutostartLoginItem(Places places) : places_(std::move(places)) {}

    /// From the environment of this process.
    [[nodiscard]] static Places placesOfThisProcess();

    [[nodiscard]] bool isEnabled() const override;

    /// Refuses to replace the user's entry of this name when it starts another program.
    [[nodiscard]] std::optional<ServiceError> setEnabled(bool enabled) override;

private:
    [[nodiscard]] std::string userEntry() const;
    [[nodiscard]] std::optional<std::string> systemEntry() const;
    [[nodiscard]] std::optional<ServiceError> writeEntry(bool hidden) const;

    Places places_;
};

}  // namespace thermopix
