#include "updates/UpdateController.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fakes/ManualMainLoop.h"
#include "fakes/MemoryUserDefaults.h"
#include "fakes/RecordingLog.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;

class ScriptedChecking final : public UpdateChecking {
public:
    Subscription check(std::function<void(const UpdateVerdict&)> concluded) override {
        ++started;
        concluded_ = std::move(concluded);
        return Subscription([this] { concluded_ = nullptr; });
    }

    [[nodiscard]] bool isRunning() const { return concluded_ != nullptr; }
    void conclude(const UpdateVerdict& verdict) {
        ASSERT_TRUE(isRunning());
        const auto concluded = concluded_;
        concluded(verdict);
    }

    int started = 0;

private:
    std::function<void(const UpdateVerdict&)> concluded_;
};

class RecordingNotices final : public UserNotices {
public:
    void show(const UpdateNotice& notice, std::function<void(bool)> shown) override {
        titles.push_back(notice.title);
        last = notice;
        shown(isThere);
    }

    bool isThere = true;
    std::vector<std::string> titles;
    UpdateNotice last;
};

const UpdateVerdict upToDate = UpToDate();
const UpdateVerdict failed = CheckFailed{CheckFailure::unreachable, "no route"};

UpdateVerdict available(const std::string& version) {
    return UpdateAvailable{version, "https://example.org/" + version, false};
}

class UpdateControllerTest : public ::testing::Test {
protected:
    void start(UpdateOrigin origin = UpdateOrigin::feed) {
        controller = std::make_unique<UpdateController>(
            origin, "1.2",
            UpdateController::Services{loop, checking, notices, defaults, log, [this] {
                                           return wallClockStart +
                                                  std::chrono::duration_cast<std::chrono::seconds>(loop.now());
                                       }});
    }

    void startAutomatic() {
        start();
        controller->setAutomaticallyChecksForUpdates(true);
    }

    UpdateMemory::Time wallClockStart{1795000000s};
    ManualMainLoop loop;
    ScriptedChecking checking;
    RecordingNotices notices;
    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    RecordingLog log;
    std::unique_ptr<UpdateController> controller;
};

using Titles = std::vector<std::string>;

TEST_F(UpdateControllerTest, aClickIsAnsweredWhateverTheVerdict) {
    start();
    for (const auto& verdict : {upToDate, failed, available("1.3"), available("1.3")}) {
        controller->checkForUpdates();
        checking.conclude(verdict);
    }
    EXPECT_EQ(notices.titles, (Titles{"You're up to date", "The check for updates failed", "Thermopix 1.3 is available",
                                      "Thermopix 1.3 is available"}));
}

TEST_F(UpdateControllerTest, clicksDuringACheckShareItsAnswer) {
    start();
    controller->checkForUpdates();
    controller->checkForUpdates();
    controller->checkForUpdates();
    EXPECT_EQ(checking.started, 1);
    checking.conclude(upToDate);
    EXPECT_EQ(notices.titles, Titles{"You're up to date"});
    EXPECT_FALSE(checking.isRunning());
    controller->checkForUpdates();
    EXPECT_EQ(checking.started, 2);
}

TEST_F(UpdateControllerTest, anAnswerThatNobodyShowsIsLogged) {
    notices.isThere = false;
    start();
    controller->checkForUpdates();
    checking.conclude(upToDate);
    EXPECT_EQ(log.lines, Titles{"update: You're up to date: Thermopix 1.2 is the newest version."});
}

TEST_F(UpdateControllerTest, aFailureIsLoggedWithItsDetail) {
    start();
    controller->checkForUpdates();
    checking.conclude(failed);
    EXPECT_EQ(log.lines, Titles{"update: the check for updates failed (unreachable): no route"});
}

TEST_F(UpdateControllerTest, nothingIsScheduledWhileOff) {
    start();
    EXPECT_FALSE(controller->automaticallyChecksForUpdates());
    controller->setAutomaticallyChecksForUpdates(false);
    loop.advance(72h);
    EXPECT_TRUE(loop.scheduled.empty());
    EXPECT_EQ(checking.started, 0);
}

TEST_F(UpdateControllerTest, switchingOffEndsTheTimerAndTheCheckThatNobodyWaitsFor) {
    startAutomatic();
    EXPECT_TRUE(controller->automaticallyChecksForUpdates());
    loop.advance(1min);
    EXPECT_TRUE(checking.isRunning());
    controller->setAutomaticallyChecksForUpdates(false);
    EXPECT_FALSE(checking.isRunning());
    EXPECT_EQ(loop.activeTimerCount(), 0U);
    loop.advance(72h);
    EXPECT_EQ(checking.started, 1);
}

TEST_F(UpdateControllerTest, switchingOffKeepsTheCheckThatTheUserWaitsFor) {
    startAutomatic();
    controller->checkForUpdates();
    controller->setAutomaticallyChecksForUpdates(false);
    checking.conclude(upToDate);
    EXPECT_EQ(notices.titles, Titles{"You're up to date"});
}

TEST_F(UpdateControllerTest, switchingOnTwiceSchedulesOnceWithGenerousLeeway) {
    startAutomatic();
    controller->setAutomaticallyChecksForUpdates(true);
    EXPECT_EQ(loop.scheduled, (std::vector<ManualMainLoop::Scheduled>{{0s, 1min, 1h, 10min}}));
}

TEST_F(UpdateControllerTest, checksOnceADay) {
    startAutomatic();
    loop.advance(1min);
    EXPECT_EQ(checking.started, 1);
    checking.conclude(upToDate);
    loop.advance(23h + 59min);
    EXPECT_EQ(checking.started, 1);
    loop.advance(1min);
    EXPECT_EQ(checking.started, 2);
    EXPECT_TRUE(notices.titles.empty());
}

TEST_F(UpdateControllerTest, aRestartDoesNotShortenTheDay) {
    startAutomatic();
    loop.advance(1min);
    checking.conclude(upToDate);
    loop.advance(10h);
    startAutomatic();
    loop.advance(13h);
    EXPECT_EQ(checking.started, 1);
    loop.advance(2h);
    EXPECT_EQ(checking.started, 2);
}

TEST_F(UpdateControllerTest, timeThatTheMachineSleptCounts) {
    startAutomatic();
    loop.advance(1min);
    checking.conclude(upToDate);
    wallClockStart += 25h;
    loop.advance(1h);
    EXPECT_EQ(checking.started, 2);
}

TEST_F(UpdateControllerTest, aLastCheckInTheFutureDoesNotStopTheChecks) {
    defaults->setData("updates.lastCheck", "1999999999");
    startAutomatic();
    loop.advance(1min);
    EXPECT_EQ(checking.started, 1);
}

TEST_F(UpdateControllerTest, aCheckOfTheUsersCountsForTheDay) {
    startAutomatic();
    controller->checkForUpdates();
    checking.conclude(upToDate);
    loop.advance(23h);
    EXPECT_EQ(checking.started, 1);
}

TEST_F(UpdateControllerTest, anAutomaticCheckThatFailsIsSilentAndRepeatedAtTheNextLook) {
    startAutomatic();
    loop.advance(1min);
    checking.conclude(failed);
    EXPECT_TRUE(notices.titles.empty());
    EXPECT_FALSE(defaults->data("updates.lastCheck"));
    loop.advance(59min);
    EXPECT_EQ(checking.started, 1);
    loop.advance(1min);
    EXPECT_EQ(checking.started, 2);
}

TEST_F(UpdateControllerTest, anAutomaticCheckAnnouncesAVersionOnceAcrossRestarts) {
    startAutomatic();
    loop.advance(1min);
    checking.conclude(available("1.3"));
    startAutomatic();
    loop.advance(25h);
    checking.conclude(available("1.3"));
    EXPECT_EQ(notices.titles, Titles{"Thermopix 1.3 is available"});
    loop.advance(25h);
    checking.conclude(available("1.4"));
    EXPECT_EQ(notices.titles, (Titles{"Thermopix 1.3 is available", "Thermopix 1.4 is available"}));
}

TEST_F(UpdateControllerTest, aVersionThatNobodyShowedIsAnnouncedAgain) {
    notices.isThere = false;
    startAutomatic();
    loop.advance(1min);
    checking.conclude(available("1.3"));
    notices.isThere = true;
    loop.advance(25h);
    checking.conclude(available("1.3"));
    EXPECT_EQ(notices.titles.size(), 2U);
    EXPECT_EQ(defaults->data("updates.announcedVersion"), "1.3");
}

TEST_F(UpdateControllerTest, aVersionThatTheUserFoundIsNotAnnouncedAgain) {
    startAutomatic();
    controller->checkForUpdates();
    checking.conclude(available("1.3"));
    loop.advance(25h);
    checking.conclude(available("1.3"));
    EXPECT_EQ(notices.titles.size(), 1U);
}

TEST_F(UpdateControllerTest, aClickDuringAnAutomaticCheckIsAnsweredByIt) {
    startAutomatic();
    loop.advance(1min);
    controller->checkForUpdates();
    EXPECT_EQ(checking.started, 1);
    checking.conclude(upToDate);
    EXPECT_EQ(notices.titles, Titles{"You're up to date"});
}

TEST_F(UpdateControllerTest, theButtonLeadsToTheReleasesPage) {
    start();
    controller->checkForUpdates();
    checking.conclude(available("1.3"));
    ASSERT_TRUE(notices.last.button);
    EXPECT_EQ(notices.last.button->page, "https://example.org/1.3");
}

TEST_F(UpdateControllerTest, aCopyWithoutAFeedNeverChecksAndStillAnswers) {
    for (const auto origin : {UpdateOrigin::packageManager, UpdateOrigin::elsewhere}) {
        start(origin);
        controller->setAutomaticallyChecksForUpdates(true);
        EXPECT_TRUE(controller->automaticallyChecksForUpdates());
        controller->checkForUpdates();
        EXPECT_EQ(notices.last, noticeOfOrigin(origin));
    }
    loop.advance(72h);
    EXPECT_TRUE(loop.scheduled.empty());
    EXPECT_EQ(checking.started, 0);
}

TEST_F(UpdateControllerTest, itsEndEndsTimerAndCheck) {
    startAutomatic();
    loop.advance(1min);
    controller.reset();
    EXPECT_FALSE(checking.isRunning());
    EXPECT_EQ(loop.activeTimerCount(), 0U);
}

}  // namespace
}  // namespace thermopix
