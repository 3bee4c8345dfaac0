#pragma once

#include <array>

#include "base/Published.h"
#include "platform/linux/glib/GLibHandles.h"
#include "tray/TrayInk.h"

namespace thermopix {

/// Follows the look of the desktop on the bus, as far as the ink depends on it. Main thread.
class DesktopColorWatch {
public:
    /// The connection outlives the watch.
    explicit DesktopColorWatch(GDBusConnection* connection) : connection_(connection) {}

    /// Asks and listens for what the rule needs, and for nothing more; nothing at all when `rule` needs nothing.
    void follow(TrayInkRule rule);

    [[nodiscard]] Published<DesktopColors>& colors() { return colors_; }

private:
    void setColorScheme(GVariant* value);
    void setXfcePanel(GVariant* value);
    void setColors(const DesktopColors& colors);

    GDBusConnection* connection_;
    Published<DesktopColors> colors_{DesktopColors{}};
    std::array<Subscription, 2> xfcePanel_;
    std::array<Subscription, 2> colorScheme_;
    TrayInkRule rule_ = TrayInkRule::light;
};

}  // namespace thermopix
