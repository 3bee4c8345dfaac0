#include "updates/AppcastJudgement.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace thermopix {
namespace {

const InstalledProgram installed{"1.2", "340", "linux", "6.1.0"};

AppcastItem release(std::string version) {
    AppcastItem item;
    item.shortVersion = std::move(version);
    item.version = "400";
    item.link = "https://example.org/" + item.shortVersion;
    return item;
}

UpdateVerdict judged(std::vector<AppcastItem> items) {
    return judgeAppcast({"https://example.org", std::move(items)}, installed);
}

UpdateVerdict offered(const std::string& version, bool isCritical = false) {
    return UpdateAvailable{version, "https://example.org/" + version, isCritical};
}

const UpdateVerdict upToDate = UpToDate();

TEST(AppcastJudgement, theNewestReleaseIsOfferedWhereverItStands) {
    EXPECT_EQ(judged({release("1.9"), release("1.10"), release("1.3")}), offered("1.10"));
    EXPECT_EQ(judged({release("1.10"), release("1.9")}), offered("1.10"));
}

TEST(AppcastJudgement, ownOlderAndNoReleasesAreNoUpdate) {
    EXPECT_EQ(judged({release("1.2")}), upToDate);
    EXPECT_EQ(judged({release("1.2.0"), release("1.1"), release("1.2-rc1")}), upToDate);
    EXPECT_EQ(judged({}), upToDate);
}

TEST(AppcastJudgement, aBuildNumberAloneMakesNoUpdate) {
    auto rebuilt = release("1.2");
    rebuilt.version = "999999";
    EXPECT_EQ(judged({rebuilt}), upToDate);
}

TEST(AppcastJudgement, aReleaseWithoutAReadableVersionIsKnownByItsOther) {
    auto item = release("");
    item.version = "1.3";
    item.link = "https://example.org/1.3";
    EXPECT_EQ(judged({item}), offered("1.3"));
}

TEST(AppcastJudgement, aPreReleaseIsReplacedByItsRelease) {
    auto program = installed;
    program.version = "1.3-beta.2";
    EXPECT_EQ(judgeAppcast({"", {release("1.3")}}, program), offered("1.3"));
    EXPECT_EQ(judgeAppcast({"", {release("1.3-beta.10")}}, program), offered("1.3-beta.10"));
    EXPECT_EQ(judgeAppcast({"", {release("1.3-alpha")}}, program), upToDate);
}

TEST(AppcastJudgement, releasesOfAChannelAreForThoseWhoAskedForIt) {
    auto beta = release("2.0");
    beta.channel = "beta";
    EXPECT_EQ(judged({beta, release("1.3")}), offered("1.3"));
    EXPECT_EQ(judged({beta}), upToDate);
}

TEST(AppcastJudgement, aReleaseForAnotherSystemIsNotOffered) {
    auto item = release("1.3");
    item.systems = {"macos"};
    EXPECT_EQ(judged({item}), upToDate);
    item.systems = {"macos", "Linux"};
    EXPECT_EQ(judged({item}), offered("1.3"));
    item.systems = {"windows", ""};
    EXPECT_EQ(judged({item}), offered("1.3"));
}

TEST(AppcastJudgement, aReleaseThatNeedsANewerSystemIsPassedOver) {
    auto item = release("1.4");
    for (const auto* minimum : {"6.1.1", "13.0", "6.10", "new"}) {
        item.minimumSystemVersion = minimum;
        EXPECT_EQ(judged({item, release("1.3")}), offered("1.3")) << minimum;
    }
    for (const auto* minimum : {"", "6.1", "6.1.0", "5.15.200"}) {
        item.minimumSystemVersion = minimum;
        EXPECT_EQ(judged({item, release("1.3")}), offered("1.4")) << minimum;
    }
}

TEST(AppcastJudgement, aSystemWithoutAVersionReachesNoMinimum) {
    auto program = installed;
    program.systemVersion = "";
    auto item = release("1.4");
    item.minimumSystemVersion = "6.1";
    EXPECT_EQ(judgeAppcast({"", {item, release("1.3")}}, program), offered("1.3"));
}

TEST(AppcastJudgement, aCriticalReleaseIsACriticalUpdate) {
    auto item = release("1.3");
    item.isCritical = true;
    EXPECT_EQ(judged({item}), offered("1.3", true));
}

TEST(AppcastJudgement, aCriticalReleaseIsCriticalBelowItsBoundOnly) {
    auto item = release("1.3");
    item.isCritical = true;
    item.criticalBelow = "341";
    EXPECT_EQ(judged({item}), offered("1.3", true));
    item.criticalBelow = "340";
    EXPECT_EQ(judged({item}), offered("1.3", false));

    item.version = "1.3";
    item.shortVersion = "";
    item.criticalBelow = "1.2.1";
    EXPECT_EQ(judged({item}), offered("1.3", true));
    item.criticalBelow = "1.2";
    EXPECT_EQ(judged({item}), offered("1.3", false));
    item.criticalBelow = "?";
    EXPECT_EQ(judged({item}), offered("1.3", true));
}

TEST(AppcastJudgement, aCriticalReleaseThatWasSkippedMakesTheNewestCritical) {
    auto urgent = release("1.3");
    urgent.isCritical = true;
    EXPECT_EQ(judged({release("1.4"), urgent}), offered("1.4", true));
    auto past = release("1.2");
    past.isCritical = true;
    EXPECT_EQ(judged({release("1.4"), past}), offered("1.4", false));
    auto beta = release("1.3");
    beta.isCritical = true;
    beta.channel = "beta";
    EXPECT_EQ(judged({release("1.4"), beta}), offered("1.4", false));
}

TEST(AppcastJudgement, thePageIsTheReleasesElseItsNotesElseTheFeeds) {
    auto item = release("1.3");
    item.releaseNotesLink = "https://example.org/notes";
    EXPECT_EQ(judged({item}), offered("1.3"));
    item.link = "http://example.org/1.3";
    EXPECT_EQ(judged({item}), UpdateVerdict(UpdateAvailable{"1.3", "https://example.org/notes", false}));
    item.releaseNotesLink = "javascript:alert(1)";
    EXPECT_EQ(judged({item}), UpdateVerdict(UpdateAvailable{"1.3", "https://example.org", false}));
    EXPECT_EQ(judgeAppcast({"", {item}}, installed), UpdateVerdict(UpdateAvailable{"1.3", std::nullopt, false}));
}

TEST(AppcastJudgement, releasesWithoutAVersionArePassedOverUnlessThereIsNoOther) {
    EXPECT_EQ(judged({release("<script>"), release("1.3")}), offered("1.3"));
    const auto verdict = judged({release("<script>"), release("new")});
    ASSERT_TRUE(std::holds_alternative<CheckFailed>(verdict));
    EXPECT_EQ(std::get<CheckFailed>(verdict).failure, CheckFailure::unreadable);
}

TEST(AppcastJudgement, aProgramThatDoesNotKnowItsVersionFindsNoUpdate) {
    const auto verdict = judgeAppcast({"", {release("1.3")}}, {"—", "—", "linux", "6.1"});
    ASSERT_TRUE(std::holds_alternative<CheckFailed>(verdict));
    EXPECT_EQ(std::get<CheckFailed>(verdict).failure, CheckFailure::unavailable);
}

}  // namespace
}  // namespace thermopix
