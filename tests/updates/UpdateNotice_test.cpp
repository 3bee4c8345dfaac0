#include "updates/UpdateNotice.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

TEST(UpdateNotice, aNewVersionIsNewsWithAButtonToItsPage) {
    const UpdateNotice expected{.title = "Thermopix 1.3 is available",
                                .body = "You have 1.2.",
                                .button = UpdateNotice::Button{"Show Release", "https://example.org/1.3"},
                                .isNews = true};
    EXPECT_EQ(noticeOf(UpdateAvailable{"1.3", "https://example.org/1.3", false}, "1.2"), expected);
}

TEST(UpdateNotice, aNewVersionWithoutAPageHasNoButton) {
    EXPECT_EQ(noticeOf(UpdateAvailable{"1.3", std::nullopt, false}, "1.2").button, std::nullopt);
}

TEST(UpdateNotice, aCriticalUpdateSaysSo) {
    const auto notice = noticeOf(UpdateAvailable{"1.3", std::nullopt, true}, "1.2");
    EXPECT_TRUE(notice.isCritical);
    EXPECT_EQ(notice.body, "This is an important update; please install it soon. You have 1.2.");
}

TEST(UpdateNotice, theNewestVersionIsSaidToBeIt) {
    const UpdateNotice expected{.title = "You're up to date", .body = "Thermopix 1.2 is the newest version."};
    EXPECT_EQ(noticeOf(UpToDate(), "1.2"), expected);
}

TEST(UpdateNotice, everyFailureIsExplainedAndItsDetailLeftToTheLog) {
    for (const auto failure : allCases<CheckFailure>()) {
        const UpdateNotice expected{.title = "The check for updates failed", .body = std::string(title(failure))};
        EXPECT_EQ(noticeOf(CheckFailed{failure, "<b>detail</b>"}, "1.2"), expected);
        EXPECT_TRUE(expected.body.ends_with('.')) << expected.body;
    }
}

TEST(UpdateNotice, aCopyWithoutAFeedSaysWhereUpdatesComeFrom) {
    EXPECT_EQ(noticeOfOrigin(UpdateOrigin::packageManager),
              (UpdateNotice{.title = "Thermopix does not update itself",
                            .body = "New versions come with your system's updates."}));
    EXPECT_EQ(noticeOfOrigin(UpdateOrigin::elsewhere),
              (UpdateNotice{.title = "Thermopix does not update itself",
                            .body = "New versions come from where it was installed from."}));
}

}  // namespace
}  // namespace thermopix
