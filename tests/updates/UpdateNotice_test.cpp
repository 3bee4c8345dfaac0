#include "updates/UpdateNotice.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

using namespace std::chrono_literals;

TEST(UpdateNotice, aNewVersionStaysWithAButtonToTheSoftwareCentre) {
    const UserNotice expected{
        .title = "Thermopix 1.3 is available",
        .body = "You have 1.2. The new version comes with your system's updates.",
        .button = UserNotice::Button{"Show in Software Centre", "appstream:io.github.thermopix.Thermopix"}};
    EXPECT_EQ(noticeOf(UpdateAvailable{"1.3", "1.2"}), expected);
}

TEST(UpdateNotice, theNewestVersionIsSaidToBeItAsFarAsTheSystemKnows) {
    const struct {
        std::optional<std::chrono::seconds> age;
        std::string said;
    } cases[]{{0s, "It looked for new ones less than an hour ago."},
              {59min + 59s, "It looked for new ones less than an hour ago."},
              {1h, "It looked for new ones an hour ago."},
              {119min, "It looked for new ones an hour ago."},
              {2h, "It looked for new ones 2 hours ago."},
              {47h + 59min, "It looked for new ones 47 hours ago."},
              {48h, "It looked for new ones 2 days ago."},
              {240h, "It looked for new ones 10 days ago."},
              {std::nullopt, "When it last looked for new ones is not known."}};
    for (const auto& row : cases) {
        const UserNotice expected{.title = "You're up to date",
                                  .body = "Thermopix 1.2 is the newest version that your system knows of. " + row.said,
                                  .isAnswer = true};
        EXPECT_EQ(noticeOf(UpToDate{"1.2", row.age}), expected);
    }
}

TEST(UpdateNotice, aFailureIsLeftToTheLogAndTheUserIsToldWhereNewVersionsComeFrom) {
    const UserNotice expected{
        .title = "The check for updates failed",
        .body = "Your system's package service gave no answer. New versions come with your system's updates.",
        .isAnswer = true};
    EXPECT_EQ(noticeOf(CheckFailed{"<b>reason</b>"}), expected);
}

TEST(UpdateNotice, whereNobodyCanBeAskedTheUserIsToldWhereNewVersionsComeFrom) {
    const auto notice = [](const std::string& body) {
        return UserNotice{.title = "Thermopix does not update itself", .body = body, .isAnswer = true};
    };
    EXPECT_EQ(noticeOf(NotKnownHere{UpdateOrigin::package}), notice("New versions come with your system's updates."));
    EXPECT_EQ(noticeOf(NotKnownHere{UpdateOrigin::flatpak}), notice("New versions come with Flatpak's updates."));
    EXPECT_EQ(noticeOf(NotKnownHere{UpdateOrigin::elsewhere}),
              notice("New versions come from where it was installed from."));
}

}  // namespace
}  // namespace thermopix
