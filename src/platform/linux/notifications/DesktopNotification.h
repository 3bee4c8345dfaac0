#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/Subscription.h"
#include "platform/linux/glib/GLibHandles.h"
#include "system/DiagnosticLog.h"
#include "system/UserNotices.h"

namespace thermopix {

/// The notices about one subject as a notification of the desktop (org.freedesktop.Notifications). Listens to the
/// service only while a notice with a button is open. Main thread.
class DesktopNotification final : public UserNotices {
public:
    /// Both outlive the notification; `sessionBus` may be null, then nothing is shown.
    DesktopNotification(GDBusConnection* sessionBus, DiagnosticLog& log) : sessionBus_(sessionBus), log_(log) {}

    void show(const UserNotice& notice, Shown shown) override;

private:
    /// Leaves out what this desktop cannot show.
    void adapt(UserNotice notice, GVariant* capabilities, Shown shown);
    void notify(const UserNotice& notice, Shown shown);
    void listen(const std::string& address);
    void forget();
    [[nodiscard]] bool isOurs(std::uint32_t identifier) const { return identifier != 0 && identifier == identifier_; }
    static void tell(const Shown& shown, bool wasShown);

    GDBusConnection* sessionBus_;
    DiagnosticLog& log_;
    /// The notification that the next one replaces; 0 for none.
    std::uint32_t identifier_ = 0;
    std::string activationToken_;
    Subscription step_;
    Subscription tokens_;
    Subscription clicks_;
    Subscription closings_;
};

}  // namespace thermopix
