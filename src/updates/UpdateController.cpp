#include "updates/UpdateController.h"

#include <fmt/core.h>

#include <chrono>
#include <utility>

namespace thermopix {

namespace {

using namespace std::chrono_literals;

constexpr auto checkPeriod = 24h;
/// Timers stand still while the machine sleeps and know nothing of a clock that is set, so the wall clock is looked
/// at each hour. A check without an answer, of a machine that is offline, is repeated at the next look.
constexpr MainLoop::Duration lookPeriod = 1h;
/// By then the session has started and is online.
constexpr MainLoop::Duration firstLook = 1min;
/// Enough to share another timer's wake-up.
constexpr MainLoop::Duration lookLeeway = 10min;

constexpr const char* category = "update";

}  // namespace

UpdateController::UpdateController(UpdateOrigin origin, std::string ownVersion, Services services)
    : origin_(origin),
      ownVersion_(std::move(ownVersion)),
      services_(std::move(services)),
      memory_(services_.defaults) {}

void UpdateController::setAutomaticallyChecksForUpdates(bool checks) {
    if (checks == std::exchange(automaticallyChecks_, checks) || origin_ != UpdateOrigin::feed) {
        return;
    }
    looks_ = checks ? services_.mainLoop.repeating(firstLook, lookPeriod, lookLeeway,
                                                   [this] {
                                                       if (isCheckDue()) {
                                                           startCheck();
                                                       }
                                                   })
                    : Subscription();
    if (!checks && !userWaits_) {
        check_.cancel();
    }
}

void UpdateController::checkForUpdates() {
    if (origin_ != UpdateOrigin::feed) {
        answer(noticeOfOrigin(origin_));
        return;
    }
    userWaits_ = true;
    startCheck();
}

/// A last check in the future was made by a clock that was wrong.
bool UpdateController::isCheckDue() const {
    const auto last = memory_.lastCheck();
    const auto now = services_.wallClock();
    return !last || *last > now || now - *last >= checkPeriod;
}

void UpdateController::startCheck() {
    if (!check_.isActive()) {
        check_ = services_.checking.check([this](const UpdateVerdict& verdict) { conclude(verdict); });
    }
}

void UpdateController::conclude(const UpdateVerdict& verdict) {
    check_.cancel();
    const bool userWaited = std::exchange(userWaits_, false);
    if (const auto* failed = std::get_if<CheckFailed>(&verdict)) {
        services_.log.diag(
            category, fmt::format("the check for updates failed ({}): {}", rawValue(failed->failure), failed->detail));
    } else {
        memory_.setLastCheck(services_.wallClock());
    }
    const auto* update = std::get_if<UpdateAvailable>(&verdict);
    if (update != nullptr && (userWaited || update->version != memory_.announcedVersion())) {
        announce(*update);
    } else if (userWaited) {
        answer(noticeOf(verdict, ownVersion_));
    }
}

void UpdateController::announce(const UpdateAvailable& update) {
    const auto notice = noticeOf(update, ownVersion_);
    services_.log.diag(category, fmt::format("{}: {}", notice.title, update.page.value_or("no page")));
    services_.notices.show(notice, [this, version = update.version](bool wasShown) {
        if (wasShown) {
            memory_.setAnnouncedVersion(version);
        }
    });
}

void UpdateController::answer(const UpdateNotice& notice) {
    services_.notices.show(notice, [this, text = fmt::format("{}: {}", notice.title, notice.body)](bool wasShown) {
        if (!wasShown) {
            services_.log.diag(category, text);
        }
    });
}

}  // namespace thermopix
