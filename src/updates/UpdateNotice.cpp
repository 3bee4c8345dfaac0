#include "updates/UpdateNotice.h"

#include <fmt/core.h>

#include <chrono>
#include <string_view>

#include "environment/AppInfo.h"

namespace thermopix {

namespace {

using namespace std::chrono_literals;

/// "an hour ago", "3 days ago"
std::string timeAgo(std::chrono::seconds age) {
    if (age < 1h) {
        return "less than an hour ago";
    }
    const auto hours = std::chrono::floor<std::chrono::hours>(age).count();
    if (hours == 1) {
        return "an hour ago";
    }
    return hours < 48 ? fmt::format("{} hours ago", hours) : fmt::format("{} days ago", hours / 24);
}

std::string_view wayOf(UpdateOrigin origin) {
    switch (origin) {
        case UpdateOrigin::package:
            return "with your system's updates";
        case UpdateOrigin::flatpak:
            return "with Flatpak's updates";
        case UpdateOrigin::elsewhere:
            break;
    }
    return "from where it was installed from";
}

struct Teller {
    UserNotice operator()(const UpToDate& verdict) const {
        return {.title = "You're up to date",
                .body = fmt::format("{} {} is the newest version that your system knows of. {}", AppInfo::name,
                                    verdict.version,
                                    verdict.age ? fmt::format("It looked for new ones {}.", timeAgo(*verdict.age))
                                                : "When it last looked for new ones is not known."),
                .isAnswer = true};
    }

    UserNotice operator()(const UpdateAvailable& verdict) const {
        return {
            .title = fmt::format("{} {} is available", AppInfo::name, verdict.version),
            .body =
                fmt::format("You have {}. The new version comes with your system's updates.", verdict.installedVersion),
            .button = UserNotice::Button{"Show in Software Centre", fmt::format("appstream:{}", AppInfo::identifier)}};
    }

    UserNotice operator()(const NotKnownHere& verdict) const {
        return {.title = fmt::format("{} does not update itself", AppInfo::name),
                .body = fmt::format("New versions come {}.", wayOf(verdict.origin)),
                .isAnswer = true};
    }

    UserNotice operator()(const CheckFailed& /*verdict*/) const {
        return {.title = "The check for updates failed",
                .body = "Your system's package service gave no answer. New versions come with your system's updates.",
                .isAnswer = true};
    }
};

}  // namespace

UserNotice noticeOf(const UpdateVerdict& verdict) {
    return std::visit(Teller(), verdict);
}

}  // namespace thermopix
