#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tray/TrayChoices.h"

/// What the trays of Linux desktops do with a status item, and how to treat each of them. Pure values.
namespace thermopix {

enum class TrayShape { wide, square };

/// Which pictures a tray is sent; all of one shape, since some trays take the largest whatever its shape.
enum class TrayPictureSet { bar, matePanel, square, xfcePanel };

[[nodiscard]] TrayShape shape(TrayPictureSet set);

/// Heights in pixels, ascending.
[[nodiscard]] std::span<const std::int32_t> pictureSizes(TrayPictureSet set);

/// Whether a left click opens the menu by itself or calls `Activate`, which is then to be offered.
enum class TrayClick { opensMenu, activates };

/// How an item makes itself known: by its bus name, or by an object path of the kind whose menus the tray opens.
enum class TrayRegistration { busName, ayatanaPath };

/// Where the ink comes from: a bar that is dark whatever the applications look like, the setting of the panel, or the
/// colour scheme of the applications.
enum class TrayInkRule { light, xfcePanel, colorScheme };

/// How a tray is treated.
struct TrayHost {
    TrayPictureSet pictures = TrayPictureSet::square;
    TrayClick click = TrayClick::opensMenu;
    TrayRegistration registration = TrayRegistration::busName;
    TrayInkRule ink = TrayInkRule::colorScheme;

    friend bool operator==(const TrayHost&, const TrayHost&) = default;
};

/// The tray that a process draws; what suits every tray for an unknown process.
[[nodiscard]] TrayHost trayHost(std::optional<std::string_view> processName);

/// How to treat the tray whose watcher runs in `watcherProcess`, when the processes of `hosts` draw it too: trays of
/// different kinds are sent what suits them all. `choice` overrules the shape.
[[nodiscard]] TrayHost trayHost(std::optional<std::string_view> watcherProcess,
                                std::span<const std::optional<std::string>> hosts, TrayShapeChoice choice);

/// The prefix of the bus names of those who draw status items; the process number follows.
inline constexpr std::string_view trayHostNamePrefix = "org.kde.StatusNotifierHost-";

/// The process number inside the bus name of a tray; none when there is none.
[[nodiscard]] std::optional<std::uint32_t> trayHostProcess(std::string_view busName);

}  // namespace thermopix
