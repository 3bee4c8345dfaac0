#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "base/Published.h"
#include "platform/linux/tray/DesktopColorWatch.h"
#include "platform/linux/tray/TrayHostWatch.h"
#include "platform/linux/tray/TrayStatusItem.h"
#include "tray/TrayChoices.h"

namespace thermopix {

/// Whether a tray draws status items; `unknown` until the bus has been asked.
enum class TrayPresence { unknown, absent, present };

/// The trays of Linux desktops as a status bar: items are StatusNotifierItems on the session bus, which appear
/// whenever there is a tray, however late or often that comes. Outlives its items. Main thread.
class TrayStatusBar final : public StatusBar {
public:
    /// `connection` is the shared one of the session bus, which carries the menus; all outlive the bar.
    TrayStatusBar(GDBusConnection* connection, TrayOptions options, MainLoop& mainLoop, DiagnosticLog& log);
    TrayStatusBar(const TrayStatusBar&) = delete;
    TrayStatusBar& operator=(const TrayStatusBar&) = delete;

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override;

    [[nodiscard]] bool hasHost() const { return presence_.value() == TrayPresence::present; }
    [[nodiscard]] Published<TrayPresence>& presence() { return presence_; }

    [[nodiscard]] const TrayChoices& choices() const { return choices_; }

    /// Reads `desktop.conf` again and applies it.
    void reload();

private:
    void decide();

    GDBusConnection* connection_;
    TrayOptions options_;
    MainLoop& mainLoop_;
    DiagnosticLog& log_;
    TrayChoices choices_;
    TrayHostWatch hostWatch_;
    DesktopColorWatch colorWatch_;
    Published<std::optional<TrayPresentation>> presentation_{std::nullopt};
    Published<TrayPresence> presence_{TrayPresence::unknown};
    std::optional<TrayHostState> hostState_;
    DesktopColors colors_;
    std::int32_t itemCount_ = 0;
    Subscription menuMessages_;
    Subscription hostSubscription_;
    Subscription colorSubscription_;
};

}  // namespace thermopix
