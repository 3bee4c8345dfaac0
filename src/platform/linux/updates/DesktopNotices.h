#pragma once

#include <gio/gio.h>

#include <cstdint>
#include <functional>
#include <string>

#include "base/Subscription.h"
#include "updates/UserNotices.h"

namespace thermopix {

/// Notices as notifications of the desktop (org.freedesktop.Notifications). Listens to the service only while a
/// notice with a button is open. Main thread.
class DesktopNotices final : public UserNotices {
public:
    /// Opens a page in the user's browser; the token, where the desktop gave one, lets the browser come to the front.
    using Opener = std::function<void(const std::string& page, const std::string& activationToken)>;

    /// `connection` outlives the notices; null where there is no bus.
    DesktopNotices(GDBusConnection* connection, Opener opener);

    void show(const UpdateNotice& notice, std::function<void(bool)> shown) override;

private:
    void notify(const UpdateNotice& notice, GVariant* capabilities, std::function<void(bool)> shown);
    void listen(const std::string& page);

    GDBusConnection* connection_;
    Opener opener_;
    /// The notification that the next one replaces; 0 for none.
    std::uint32_t identifier_ = 0;
    std::string activationToken_;
    Subscription call_;
    Subscription tokens_;
    Subscription clicks_;
    Subscription closings_;
};

}  // namespace thermopix
