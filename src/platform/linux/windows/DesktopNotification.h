#pragma once

#include <cstdint>
#include <string>

#include "base/Subscription.h"
#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

/// One notification of the desktop (org.freedesktop.Notifications); a new text replaces the one that is shown. Where
/// nobody shows notifications, nothing happens. Main thread.
class DesktopNotification {
public:
    /// `sessionBus` may be null; it outlives the notification.
    explicit DesktopNotification(GDBusConnection* sessionBus) : sessionBus_(sessionBus) {}

    /// `body` may be empty. Neither holds markup.
    void show(const std::string& summary, const std::string& body);

private:
    GDBusConnection* sessionBus_;
    std::uint32_t shown_ = 0;
    Subscription call_;
};

}  // namespace thermopix
