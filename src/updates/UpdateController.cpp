#include "updates/UpdateController.h"

#include <fmt/core.h>

#include <chrono>
#include <utility>

namespace thermopix {

namespace {

using namespace std::chrono_literals;

constexpr auto checkPeriod = 24h;
/// The start of a session has enough to do.
constexpr MainLoop::Duration firstLook = 10min;
/// Timers stand still while the machine sleeps and know nothing of a clock that is set, so the wall clock is looked
/// at each hour.
constexpr MainLoop::Duration lookPeriod = 1h;
/// Enough to share another timer's wake-up.
constexpr MainLoop::Duration lookLeeway = 10min;

constexpr const char* category = "update";

}  // namespace

UpdateController::UpdateController(const UpdateSource& source, Services services)
    : origin_(source.origin),
      services_(std::move(services)),
      memory_(services_.defaults),
      check_(services_.packages, services_.mainLoop, source.package) {}

void UpdateController::setAutomaticallyChecksForUpdates(bool checks) {
    if (checks == std::exchange(automaticallyChecks_, checks) || origin_ != UpdateOrigin::package) {
        return;
    }
    looks_ = checks ? services_.mainLoop.repeating(firstLook, lookPeriod, lookLeeway, [this] { checkIfDue(); })
                    : Subscription();
    if (!checks && !userWaits_) {
        check_.cancel();
    }
}

void UpdateController::checkForUpdates() {
    if (origin_ != UpdateOrigin::package) {
        tell(NotKnownHere{origin_});
        return;
    }
    userWaits_ = true;
    startCheck();
}

/// A last check in the future was made by a clock that was wrong.
void UpdateController::checkIfDue() {
    const auto last = memory_.lastCheck();
    const auto now = services_.wallClock();
    if (!last || *last > now || now - *last >= checkPeriod) {
        startCheck();
    }
}

void UpdateController::startCheck() {
    if (!check_.isRunning()) {
        memory_.setLastCheck(services_.wallClock());
        check_.start([this](const UpdateVerdict& verdict) { conclude(verdict); });
    }
}

void UpdateController::conclude(const UpdateVerdict& verdict) {
    const bool userWaited = std::exchange(userWaits_, false);
    if (const auto* failed = std::get_if<CheckFailed>(&verdict)) {
        services_.log.diag(category, fmt::format("the check for updates failed: {}", failed->reason));
    }
    const auto* update = std::get_if<UpdateAvailable>(&verdict);
    if (userWaited || (update != nullptr && update->version != memory_.announcedVersion())) {
        tell(verdict);
    }
}

void UpdateController::tell(const UpdateVerdict& verdict) {
    services_.notices.show(noticeOf(verdict), [this, verdict](bool wasShown) {
        const auto* update = std::get_if<UpdateAvailable>(&verdict);
        if (!wasShown) {
            const auto notice = noticeOf(verdict);
            services_.log.diag(category, fmt::format("{}: {}", notice.title, notice.body));
        } else if (update != nullptr) {
            memory_.setAnnouncedVersion(update->version);
        }
    });
}

}  // namespace thermopix
