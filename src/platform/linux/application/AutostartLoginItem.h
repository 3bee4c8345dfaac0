#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/glib/GLibHandles.h"
#include "system/LoginItemManaging.h"
#include "system/UserNotices.h"

namespace thermopix {

/// Opens the program at login through an XDG autostart entry (XDG autostart 0.5).
/// Keeps no state: the files are judged each time as the session would judge them.
class AutostartLoginItem final : public LoginItemManaging {
public:
    struct Places {
        /// Where the user's own entries are; empty when there is no home for them.
        std::string userFolder;
        /// `$XDG_CONFIG_DIRS`, most important first.
        std::vector<std::string> systemFolders;
        /// `$XDG_CURRENT_DESKTOP`.
        std::vector<std::string> currentDesktops;
        /// The program that the entry starts, absolute.
        std::string program;
    };

    /// `notices` outlives the item.
    AutostartLoginItem(Places places, UserNotices& notices) : places_(std::move(places)), notices_(notices) {}

    /// From the environment of this process; the user's own entries are in the folder of the user's configuration.
    [[nodiscard]] static Places placesOfThisProcess(std::string userFolder);

    [[nodiscard]] bool isEnabled() const override;

    /// Changes of the user's entry what it has to, and tells the user why when it cannot: an entry of this name that
    /// starts another program stays as it is. One whose program is gone, or has our name elsewhere, is ours.
    [[nodiscard]] std::optional<ServiceError> setEnabled(bool enabled) override;

private:
    [[nodiscard]] std::optional<ServiceError> change(bool enabled) const;
    [[nodiscard]] std::optional<ServiceError> switchOn(GKeyFileHandle entry) const;
    [[nodiscard]] std::optional<ServiceError> switchOff(GKeyFileHandle entry) const;
    [[nodiscard]] std::string userEntry() const;
    [[nodiscard]] bool hasUserEntry() const;
    /// The most important one; null when there is none.
    [[nodiscard]] GKeyFileHandle systemEntry() const;
    [[nodiscard]] GKeyFileHandle newEntry() const;
    /// Whether nobody has changed it since.
    [[nodiscard]] bool isAsWritten(GKeyFile* entry) const;
    [[nodiscard]] std::optional<ServiceError> save(GKeyFile* entry) const;
    [[nodiscard]] std::optional<ServiceError> removeUserEntry() const;

    Places places_;
    UserNotices& notices_;
};

}  // namespace thermopix
