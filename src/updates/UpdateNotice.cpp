#include "updates/UpdateNotice.h"

#include <fmt/core.h>

#include "environment/AppInfo.h"

namespace thermopix {

namespace {

struct Teller {
    const std::string& ownVersion;

    UpdateNotice operator()(const UpToDate& /*verdict*/) const {
        return {.title = "You're up to date",
                .body = fmt::format("{} {} is the newest version.", AppInfo::name, ownVersion)};
    }

    UpdateNotice operator()(const UpdateAvailable& update) const {
        UpdateNotice notice{
            .title = fmt::format("{} {} is available", AppInfo::name, update.version),
            .body = fmt::format("{}You have {}.",
                                update.isCritical ? "This is an important update; please install it soon. " : "",
                                ownVersion),
            .isCritical = update.isCritical,
            .isNews = true};
        if (update.page) {
            notice.button = UpdateNotice::Button{"Show Release", *update.page};
        }
        return notice;
    }

    UpdateNotice operator()(const CheckFailed& failed) const {
        return {.title = "The check for updates failed", .body = std::string(title(failed.failure))};
    }
};

}  // namespace

UpdateNotice noticeOf(const UpdateVerdict& verdict, const std::string& ownVersion) {
    return std::visit(Teller{ownVersion}, verdict);
}

UpdateNotice noticeOfOrigin(UpdateOrigin origin) {
    return {.title = fmt::format("{} does not update itself", AppInfo::name),
            .body = origin == UpdateOrigin::packageManager ? "New versions come with your system's updates."
                                                           : "New versions come from where it was installed from."};
}

}  // namespace thermopix
