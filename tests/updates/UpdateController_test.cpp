#include "updates/UpdateController.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "ScriptedPackages.h"
#include "fakes/ManualMainLoop.h"
#include "fakes/MemoryUserDefaults.h"
#include "fakes/RecordingLog.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;
using Outcome = PackageService::Outcome;

class RecordingNotices final : public UserNotices {
public:
    void show(const UserNotice& notice, Shown shown) override {
        titles.push_back(notice.title);
        last = notice;
        shown(isThere);
    }

    bool isThere = true;
    Texts titles;
    UserNotice last;
};

class UpdateControllerTest : public ::testing::Test {
protected:
    void start(const UpdateSource& source = {UpdateOrigin::package, "thermopix"}) {
        controller = std::make_unique<UpdateController>(
            source, UpdateController::Services{loop, packages, notices, defaults, log, [this] {
                                                   return wallClockStart +
                                                          std::chrono::floor<std::chrono::seconds>(loop.now());
                                               }});
    }
    void startAutomatic() {
        start();
        controller->setAutomaticallyChecksForUpdates(true);
    }
    [[nodiscard]] auto checks() const {
        return std::count(packages.questions.begin(), packages.questions.end(), "installed thermopix");
    }

    UpdateMemory::Time wallClockStart{1795000000s};
    ManualMainLoop loop;
    ScriptedPackages packages;
    RecordingNotices notices;
    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    RecordingLog log;
    std::unique_ptr<UpdateController> controller;
};

TEST_F(UpdateControllerTest, everyClickIsAnsweredOnceWhateverTheVerdict) {
    start();
    const std::vector<std::function<void()>> answers{
        [&] { packages.sayUpToDate(); },
        [&] { packages.answer({}, Outcome::failed); },
        [&] { packages.answer({}, Outcome::noService); },
        [&] { packages.answer({}); },
        [&] { loop.advance(1min); },
        [&] { packages.offer("1.3"); },
        [&] { packages.offer("1.3"); },
    };
    for (const auto& answer : answers) {
        controller->checkForUpdates();
        answer();
    }
    EXPECT_EQ(notices.titles,
              (Texts{"You're up to date", "The check for updates failed", "Thermopix does not update itself",
                     "Thermopix does not update itself", "The check for updates failed", "Thermopix 1.3 is available",
                     "Thermopix 1.3 is available"}));
    EXPECT_EQ(log.lines,
              (Texts{"update: the check for updates failed: the package service cannot say what is installed",
                     "update: the check for updates failed: the package service gave no answer"}));
}

TEST_F(UpdateControllerTest, clicksDuringACheckShareItsAnswer) {
    startAutomatic();
    loop.advance(10min);
    for (int i = 0; i < 3; ++i) {
        controller->checkForUpdates();
    }
    EXPECT_EQ(checks(), 1);
    packages.sayUpToDate();
    EXPECT_EQ(notices.titles, Texts{"You're up to date"});
    controller->checkForUpdates();
    EXPECT_EQ(checks(), 2);
}

TEST_F(UpdateControllerTest, anAnswerThatNobodyShowsIsLogged) {
    notices.isThere = false;
    start({UpdateOrigin::elsewhere, ""});
    controller->checkForUpdates();
    EXPECT_EQ(log.lines, Texts{"update: Thermopix does not update itself: New versions come from where it was "
                               "installed from."});
}

TEST_F(UpdateControllerTest, aCopyThatIsNoPackageAsksNobodyAndStillAnswers) {
    for (const auto origin : {UpdateOrigin::flatpak, UpdateOrigin::elsewhere}) {
        start({origin, ""});
        controller->setAutomaticallyChecksForUpdates(true);
        EXPECT_TRUE(controller->automaticallyChecksForUpdates());
        controller->checkForUpdates();
        EXPECT_EQ(notices.last, noticeOf(NotKnownHere{origin}));
    }
    loop.advance(72h);
    EXPECT_TRUE(loop.scheduled.empty());
    EXPECT_EQ(packages.questions, Texts());
}

TEST_F(UpdateControllerTest, nothingIsScheduledWhileOffAndOneTimerWithGenerousLeewayWhileOn) {
    start();
    EXPECT_FALSE(controller->automaticallyChecksForUpdates());
    controller->setAutomaticallyChecksForUpdates(false);
    loop.advance(72h);
    EXPECT_TRUE(loop.scheduled.empty());
    controller->setAutomaticallyChecksForUpdates(true);
    controller->setAutomaticallyChecksForUpdates(true);
    EXPECT_EQ(loop.scheduled, (std::vector<ManualMainLoop::Scheduled>{{72h, 10min, 1h, 10min}}));
}

TEST_F(UpdateControllerTest, switchingOffEndsTheTimerAndTheCheckThatNobodyWaitsFor) {
    startAutomatic();
    loop.advance(10min);
    EXPECT_TRUE(packages.isAsked);
    controller->setAutomaticallyChecksForUpdates(false);
    EXPECT_FALSE(packages.isAsked);
    EXPECT_EQ(loop.activeTimerCount(), 0U);
    loop.advance(72h);
    EXPECT_EQ(checks(), 1);
    controller->setAutomaticallyChecksForUpdates(true);
    controller->checkForUpdates();
    controller->setAutomaticallyChecksForUpdates(false);
    packages.sayUpToDate();
    EXPECT_EQ(notices.titles, Texts{"You're up to date"});
}

TEST_F(UpdateControllerTest, checksOnceADayAndNeverInTheFirstTenMinutes) {
    startAutomatic();
    loop.advance(10min - 1s);
    EXPECT_EQ(checks(), 0);
    loop.advance(1s);
    EXPECT_EQ(checks(), 1);
    packages.sayUpToDate();
    loop.advance(24h - 1s);
    EXPECT_EQ(checks(), 1);
    loop.advance(1s);
    EXPECT_EQ(checks(), 2);
    EXPECT_TRUE(notices.titles.empty());
}

TEST_F(UpdateControllerTest, aRestartDoesNotShortenTheDayAndSleepCountsForIt) {
    startAutomatic();
    loop.advance(10min);
    packages.sayUpToDate();
    loop.advance(10h);
    startAutomatic();
    loop.advance(13h);
    EXPECT_EQ(checks(), 1);
    wallClockStart += 1h;
    loop.advance(1h);
    EXPECT_EQ(checks(), 2);
}

TEST_F(UpdateControllerTest, aFailedCheckIsSilentAndNotRepeatedTheSameDay) {
    startAutomatic();
    loop.advance(10min);
    packages.answer({}, Outcome::failed);
    loop.advance(23h);
    EXPECT_EQ(checks(), 1);
    loop.advance(1h);
    EXPECT_EQ(checks(), 2);
    EXPECT_TRUE(notices.titles.empty());
}

TEST_F(UpdateControllerTest, aCheckOfTheUsersCountsForTheDay) {
    startAutomatic();
    controller->checkForUpdates();
    packages.sayUpToDate();
    loop.advance(23h);
    EXPECT_EQ(checks(), 1);
}

TEST_F(UpdateControllerTest, whatAnOldOrForeignMemorySaysDoesNotStopTheChecks) {
    for (const std::string lastCheck : {"1999999999", "yesterday", "-1", "", "99999999999999999999", "\xFF"}) {
        defaults->setData("updates.lastCheck", lastCheck);
        defaults->setData("updates.announcedVersion", std::string(100000, '\xFF'));
        startAutomatic();
        loop.advance(10min);
        packages.offer("1.3");
        EXPECT_EQ(defaults->data("updates.announcedVersion"), "1.3") << lastCheck;
    }
}

TEST_F(UpdateControllerTest, eachNewVersionIsAnnouncedOnceAcrossRestarts) {
    for (const std::string version : {"1.3", "1.3", "1.4", "1.4"}) {
        startAutomatic();
        wallClockStart += 24h;
        loop.advance(10min);
        packages.offer(version);
    }
    EXPECT_EQ(notices.titles, (Texts{"Thermopix 1.3 is available", "Thermopix 1.4 is available"}));
}

TEST_F(UpdateControllerTest, aVersionThatTheUserFoundIsNotAnnouncedAndOneThatNobodyShowedIsAnnouncedAgain) {
    startAutomatic();
    controller->checkForUpdates();
    packages.offer("1.3");
    loop.advance(10min);
    const auto nextDayOffers = [&](const std::string& version) {
        wallClockStart += 24h;
        loop.advance(1h);
        packages.offer(version);
    };
    nextDayOffers("1.3");
    EXPECT_EQ(notices.titles.size(), 1U);
    notices.isThere = false;
    nextDayOffers("1.4");
    notices.isThere = true;
    nextDayOffers("1.4");
    nextDayOffers("1.4");
    EXPECT_EQ(notices.titles.size(), 3U);
    EXPECT_EQ(defaults->data("updates.announcedVersion"), "1.4");
}

TEST_F(UpdateControllerTest, itsEndEndsTimerAndCheck) {
    startAutomatic();
    loop.advance(10min);
    controller.reset();
    EXPECT_FALSE(packages.isAsked);
    EXPECT_EQ(loop.activeTimerCount(), 0U);
}

}  // namespace
}  // namespace thermopix
