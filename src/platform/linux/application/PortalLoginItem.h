#pragma once

#include <gio/gio.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/Subscription.h"
#include "system/LoginItemManaging.h"
#include "system/UserDefaults.h"
#include "system/UserNotices.h"

namespace thermopix {

/// Opens the program at login where it is confined: the desktop's Background portal is asked, and answers when it or
/// the user likes. It cannot be asked how things stand, so its last answer counts. Main thread.
class PortalLoginItem final : public LoginItemManaging {
public:
    static constexpr std::string_view answerKey = "login.portalAnswer";

    /// `sessionBus` may be null; it and `notices` outlive the item.
    PortalLoginItem(GDBusConnection* sessionBus, std::shared_ptr<UserDefaults> memory, UserNotices& notices)
        : sessionBus_(sessionBus),
          memory_(std::move(memory)),
          notices_(notices),
          isEnabled_(memory_->data(answerKey) == "on") {}

    [[nodiscard]] bool isEnabled() const override { return isEnabled_; }

    /// A later question takes the place of one that was not answered yet.
    [[nodiscard]] std::optional<ServiceError> setEnabled(bool enabled) override;

private:
    void hear(GVariant* response);
    void tell(const char* reason);

    GDBusConnection* sessionBus_;
    std::shared_ptr<UserDefaults> memory_;
    UserNotices& notices_;
    bool isEnabled_;
    /// What is asked for, until it is answered.
    std::optional<bool> wanted_;
    unsigned questions_ = 0;
    Subscription call_;
    Subscription response_;
};

}  // namespace thermopix
