#include "tray/TrayHost.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace thermopix {
namespace {

struct HostRow {
    /// The beginning of the process name, of which the kernel keeps 15 bytes.
    std::string_view process;
    TrayHost host;
};

constexpr std::array hostTable{
    HostRow{"waybar", {TrayPictureSet::bar, TrayClick::opensMenu, TrayRegistration::busName, TrayInkRule::light}},
    HostRow{"notification-ar",
            {TrayPictureSet::matePanel, TrayClick::activates, TrayRegistration::busName, TrayInkRule::colorScheme}},
    HostRow{"xapp-sn-watcher",
            {TrayPictureSet::bar, TrayClick::opensMenu, TrayRegistration::ayatanaPath, TrayInkRule::colorScheme}},
    HostRow{"xfce4-panel",
            {TrayPictureSet::xfcePanel, TrayClick::opensMenu, TrayRegistration::busName, TrayInkRule::xfcePanel}},
    // A plug-in of the same panel in a process of its own: panel-NUMBER-NAME.
    HostRow{"panel-",
            {TrayPictureSet::xfcePanel, TrayClick::opensMenu, TrayRegistration::busName, TrayInkRule::xfcePanel}},
    HostRow{"lxqt-panel",
            {TrayPictureSet::square, TrayClick::activates, TrayRegistration::busName, TrayInkRule::colorScheme}},
    HostRow{"gnome-shell",
            {TrayPictureSet::square, TrayClick::opensMenu, TrayRegistration::busName, TrayInkRule::light}},
    HostRow{"swaybar", {TrayPictureSet::square, TrayClick::opensMenu, TrayRegistration::busName, TrayInkRule::light}},
};

constexpr std::array<std::int32_t, 2> barSizes{16, 32};
constexpr std::array<std::int32_t, 7> matePanelSizes{16, 22, 24, 26, 28, 32, 48};
constexpr std::array<std::int32_t, 7> squareSizes{16, 20, 22, 24, 32, 44, 48};
// This panel takes the largest picture, so the one for twice the density is the exact double of the other.
constexpr std::array<std::int32_t, 2> xfcePanelSizes{22, 44};

}  // namespace

TrayShape shape(TrayPictureSet set) {
    return set == TrayPictureSet::bar || set == TrayPictureSet::matePanel ? TrayShape::wide : TrayShape::square;
}

std::span<const std::int32_t> pictureSizes(TrayPictureSet set) {
    switch (set) {
        case TrayPictureSet::bar:
            return barSizes;
        case TrayPictureSet::matePanel:
            return matePanelSizes;
        case TrayPictureSet::xfcePanel:
            return xfcePanelSizes;
        case TrayPictureSet::square:
            break;
    }
    return squareSizes;
}

TrayHost trayHost(std::optional<std::string_view> processName) {
    auto name = processName.value_or("");
    // Some distributions start a program through a wrapper and rename it ".NAME-wrapped".
    if (name.starts_with('.')) {
        name.remove_prefix(1);
    }
    const auto* row = std::find_if(hostTable.begin(), hostTable.end(),
                                   [name](const HostRow& candidate) { return name.starts_with(candidate.process); });
    return row == hostTable.end() ? TrayHost{} : row->host;
}

TrayHost trayHost(std::optional<std::string_view> watcherProcess, std::span<const std::optional<std::string>> hosts,
                  TrayShapeChoice choice) {
    const TrayHost watcher = trayHost(watcherProcess);
    const bool isMixed = std::any_of(hosts.begin(), hosts.end(), [&watcher](const auto& process) {
        return trayHost(process ? std::optional<std::string_view>(*process) : std::nullopt) != watcher;
    });
    TrayHost host = watcher;
    if (isMixed) {
        host = TrayHost{};
        host.registration = watcher.registration;
    }
    if (choice == TrayShapeChoice::wide && shape(host.pictures) != TrayShape::wide) {
        host.pictures = TrayPictureSet::bar;
    } else if (choice == TrayShapeChoice::square && shape(host.pictures) != TrayShape::square) {
        host.pictures = TrayPictureSet::square;
    }
    return host;
}

std::optional<std::uint32_t> trayHostProcess(std::string_view busName) {
    if (!busName.starts_with(trayHostNamePrefix)) {
        return std::nullopt;
    }
    busName.remove_prefix(trayHostNamePrefix.size());
    std::uint32_t process = 0;
    const auto* end = busName.data() + busName.size();
    const auto [rest, error] = std::from_chars(busName.data(), end, process);
    if (error != std::errc() || (rest != end && *rest != '-')) {
        return std::nullopt;
    }
    return process;
}

}  // namespace thermopix
