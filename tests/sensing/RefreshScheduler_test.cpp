#include "sensing/RefreshScheduler.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "fakes/ManualMainLoop.h"
#include "fakes/ManualSleepNotifications.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Events = std::vector<std::string>;
using Scheduled = ManualMainLoop::Scheduled;

class RefreshSchedulerTest : public ::testing::Test {
protected:
    RefreshSchedulerTest() {
        scheduler->onTick = [this] { events.emplace_back("tick"); };
        scheduler->onWake = [this] { events.emplace_back("wake"); };
    }

    /// What happened since the last look, with everything that is due now.
    Events happened() {
        loop.runPending();
        return std::exchange(events, {});
    }
    Events happenedWithin(MainLoop::Duration duration) {
        loop.advance(duration);
        return std::exchange(events, {});
    }

    /// Running, with the first tick behind it.
    void tickOnce(RefreshInterval interval = RefreshInterval::oneSecond) {
        scheduler->start(interval);
        EXPECT_EQ(loop.scheduled.back().period, seconds(interval));
        (void)happened();
    }
    void sleepAndWake() {
        sleep.send(SleepNotification::willSleep);
        sleep.send(SleepNotification::didWake);
    }
    void expectNothingLeft() const {
        EXPECT_EQ(loop.activeTimerCount(), 0U);
        EXPECT_EQ(sleep.activeCount(), 0U);
    }

    ManualMainLoop loop;
    ManualSleepNotifications sleep;
    Events events;
    std::unique_ptr<RefreshScheduler> scheduler = std::make_unique<RefreshScheduler>(loop, sleep);
};

TEST_F(RefreshSchedulerTest, StartsIdleAtTwoSeconds) {
    EXPECT_EQ(scheduler->interval(), RefreshInterval::twoSeconds);
    EXPECT_FALSE(scheduler->isRunning());
    EXPECT_FALSE(scheduler->isAsleep());
    EXPECT_TRUE(loop.scheduled.empty());
    EXPECT_TRUE(sleep.observed.empty());
}

TEST_F(RefreshSchedulerTest, TicksAtOnceAndThenAtTheInterval) {
    scheduler->start(RefreshInterval::fiveSeconds);
    EXPECT_TRUE(scheduler->isRunning());
    EXPECT_EQ(scheduler->interval(), RefreshInterval::fiveSeconds);
    EXPECT_TRUE(events.empty()) << "the first tick comes from the loop, not from start";
    EXPECT_EQ(loop.scheduled, (std::vector<Scheduled>{{0s, 0s, 5s, 1250ms}}));
    EXPECT_EQ(happened(), Events{"tick"});
    EXPECT_EQ(happenedWithin(4999ms), Events{});
    EXPECT_EQ(happenedWithin(1ms), Events{"tick"});
    EXPECT_EQ(happenedWithin(10s), (Events{"tick", "tick"}));
}

TEST_F(RefreshSchedulerTest, EveryIntervalAsksForItsPeriodAndLeeway) {
    const std::vector<Scheduled> expected{
        {0s, 0s, 1s, 250ms}, {0s, 0s, 2s, 500ms}, {0s, 0s, 5s, 1250ms}, {0s, 0s, 10s, 2500ms}, {0s, 0s, 30s, 7500ms}};
    for (const auto interval : allCases<RefreshInterval>()) {
        scheduler->start(interval);
    }
    EXPECT_EQ(loop.scheduled, expected);
    EXPECT_EQ(loop.activeTimerCount(), 1U);
}

TEST_F(RefreshSchedulerTest, TheIntervalInUseChangesNothing) {
    tickOnce(RefreshInterval::fiveSeconds);
    scheduler->setInterval(RefreshInterval::fiveSeconds);
    EXPECT_EQ(happened(), Events{});
    EXPECT_EQ(loop.scheduled.size(), 1U);
}

TEST_F(RefreshSchedulerTest, ANewIntervalTicksAtOnceAndThenAtItsPeriod) {
    scheduler->start(RefreshInterval::fiveSeconds);
    (void)happenedWithin(3s);
    scheduler->setInterval(RefreshInterval::tenSeconds);
    EXPECT_EQ(happened(), Events{"tick"});
    EXPECT_EQ(loop.scheduled.back(), (Scheduled{3s, 0s, 10s, 2500ms}));
    EXPECT_EQ(loop.activeTimerCount(), 1U);
    EXPECT_EQ(happenedWithin(9999ms), Events{});
    EXPECT_EQ(happenedWithin(1ms), Events{"tick"});
}

TEST_F(RefreshSchedulerTest, ANewIntervalWhileStoppedWaitsForTheStart) {
    scheduler->setInterval(RefreshInterval::tenSeconds);
    EXPECT_EQ(scheduler->interval(), RefreshInterval::tenSeconds);
    EXPECT_FALSE(scheduler->isRunning());
    EXPECT_TRUE(loop.scheduled.empty());
}

TEST_F(RefreshSchedulerTest, ANewIntervalWhileAsleepWaitsForTheWake) {
    tickOnce();
    sleep.send(SleepNotification::willSleep);
    scheduler->setInterval(RefreshInterval::thirtySeconds);
    EXPECT_EQ(loop.activeTimerCount(), 0U);
    sleep.send(SleepNotification::didWake);
    EXPECT_EQ(happened(), (Events{"wake", "tick"}));
    EXPECT_EQ(loop.scheduled.back(), (Scheduled{0s, 0s, 30s, 7500ms}));
}

TEST_F(RefreshSchedulerTest, StoppingEndsTheTimerAndKeepsTheObservers) {
    scheduler->start(RefreshInterval::oneSecond);
    scheduler->stop();
    EXPECT_FALSE(scheduler->isRunning());
    EXPECT_EQ(happenedWithin(10s), Events{});
    EXPECT_EQ(loop.activeTimerCount(), 0U);
    EXPECT_EQ(sleep.activeCount(), 4U);
    scheduler->stop();
    scheduler->start(RefreshInterval::oneSecond);
    EXPECT_EQ(happened(), Events{"tick"});
}

TEST_F(RefreshSchedulerTest, StartingTwiceObservesOnce) {
    scheduler->start(RefreshInterval::oneSecond);
    scheduler->stop();
    scheduler->start(RefreshInterval::oneSecond);
    scheduler->start(RefreshInterval::oneSecond);
    EXPECT_EQ(sleep.observed, (std::vector{SleepNotification::willSleep, SleepNotification::screensDidSleep,
                                           SleepNotification::didWake, SleepNotification::screensDidWake}));
    EXPECT_EQ(loop.activeTimerCount(), 1U);
}

TEST_F(RefreshSchedulerTest, SleepsWithoutATimerAndWakesOnce) {
    tickOnce();
    sleep.send(SleepNotification::willSleep);
    EXPECT_TRUE(scheduler->isAsleep());
    EXPECT_TRUE(scheduler->isRunning());
    EXPECT_EQ(loop.activeTimerCount(), 0U);
    EXPECT_EQ(happenedWithin(1h), Events{});

    sleep.send(SleepNotification::didWake);
    EXPECT_FALSE(scheduler->isAsleep());
    EXPECT_EQ(happened(), (Events{"wake", "tick"}));
    sleep.send(SleepNotification::screensDidWake);
    EXPECT_EQ(happened(), Events{});
    EXPECT_EQ(happenedWithin(1s), Events{"tick"});
}

TEST_F(RefreshSchedulerTest, HoweverMachineAndDisplaysSleepItWakesOnce) {
    using enum SleepNotification;
    tickOnce();
    for (const auto& [sleeps, wakes] :
         std::vector<std::pair<std::vector<SleepNotification>, std::vector<SleepNotification>>>{
             {{screensDidSleep}, {screensDidWake}}, {{screensDidSleep, willSleep}, {didWake, screensDidWake}}}) {
        for (const auto notification : sleeps) {
            sleep.send(notification);
        }
        EXPECT_EQ(happenedWithin(1h), Events{});
        for (const auto notification : wakes) {
            sleep.send(notification);
        }
        EXPECT_EQ(happened(), (Events{"wake", "tick"}));
    }
}

TEST_F(RefreshSchedulerTest, AWakeWithoutASleepIsIgnored) {
    tickOnce();
    sleep.send(SleepNotification::didWake);
    sleep.send(SleepNotification::screensDidWake);
    EXPECT_EQ(happened(), Events{});
    EXPECT_EQ(loop.scheduled.size(), 1U);
}

TEST_F(RefreshSchedulerTest, WakingWhileStoppedTellsButDoesNotTick) {
    scheduler->start(RefreshInterval::oneSecond);
    scheduler->stop();
    sleep.send(SleepNotification::willSleep);
    EXPECT_TRUE(scheduler->isAsleep());
    sleep.send(SleepNotification::didWake);
    EXPECT_EQ(happenedWithin(10s), Events{"wake"});
    EXPECT_EQ(loop.activeTimerCount(), 0U);
}

TEST_F(RefreshSchedulerTest, StartingWhileAsleepWaitsForTheWake) {
    scheduler->start(RefreshInterval::oneSecond);
    scheduler->stop();
    sleep.send(SleepNotification::willSleep);
    scheduler->start(RefreshInterval::fiveSeconds);
    EXPECT_TRUE(scheduler->isRunning());
    EXPECT_EQ(happenedWithin(10s), Events{});
    sleep.send(SleepNotification::didWake);
    EXPECT_EQ(happened(), (Events{"wake", "tick"}));
}

TEST_F(RefreshSchedulerTest, StoppingWhileAsleepWakesIdle) {
    tickOnce();
    sleep.send(SleepNotification::willSleep);
    scheduler->stop();
    sleep.send(SleepNotification::didWake);
    EXPECT_EQ(happenedWithin(10s), Events{"wake"});
}

TEST_F(RefreshSchedulerTest, WithoutCallbacksItRunsInSilence) {
    scheduler->onTick = nullptr;
    scheduler->onWake = nullptr;
    scheduler->start(RefreshInterval::oneSecond);
    loop.advance(3s);
    sleepAndWake();
    EXPECT_EQ(happenedWithin(1s), Events{});
    EXPECT_EQ(loop.firings, 6);
}

TEST_F(RefreshSchedulerTest, TheCallbacksSetLastAreCalled) {
    tickOnce();
    scheduler->onTick = [this] { events.emplace_back("other tick"); };
    scheduler->onWake = [this] { events.emplace_back("other wake"); };
    EXPECT_EQ(happenedWithin(1s), Events{"other tick"});
    sleepAndWake();
    EXPECT_EQ(happened(), (Events{"other wake", "other tick"}));
}

TEST_F(RefreshSchedulerTest, ACallbackMayReplaceItself) {
    const std::string name = "a name too long to be kept inside the callback itself";
    scheduler->onTick = [this, name] {
        scheduler->onTick = [this] { events.emplace_back("second"); };
        events.push_back(name);
    };
    scheduler->onWake = [this, name] {
        scheduler->onWake = nullptr;
        events.push_back(name);
    };
    scheduler->start(RefreshInterval::oneSecond);
    EXPECT_EQ(happened(), Events{name});
    EXPECT_EQ(happenedWithin(1s), Events{"second"});
    sleepAndWake();
    sleepAndWake();
    EXPECT_EQ(happened(), (Events{name, "second"}));
}

TEST_F(RefreshSchedulerTest, ATickMayStopOrChangeTheInterval) {
    scheduler->onTick = [this] {
        events.emplace_back("tick");
        if (scheduler->interval() == RefreshInterval::oneSecond) {
            scheduler->setInterval(RefreshInterval::twoSeconds);
        } else {
            scheduler->stop();
        }
    };
    scheduler->start(RefreshInterval::oneSecond);
    EXPECT_EQ(happenedWithin(10s), (Events{"tick", "tick"}));
    EXPECT_EQ(loop.activeTimerCount(), 0U);
}

TEST_F(RefreshSchedulerTest, WakingMayStopTheScheduler) {
    scheduler->onWake = [this] { scheduler->stop(); };
    tickOnce();
    sleepAndWake();
    EXPECT_EQ(happenedWithin(10s), Events{});
}

TEST_F(RefreshSchedulerTest, ATickMayDestroyTheScheduler) {
    const std::string name = "a name too long to be kept inside the callback itself";
    scheduler->onTick = [this, name] {
        scheduler.reset();
        events.push_back(name);
    };
    scheduler->start(RefreshInterval::oneSecond);
    EXPECT_EQ(happenedWithin(10s), Events{name});
    expectNothingLeft();
}

TEST_F(RefreshSchedulerTest, WakingMayDestroyTheScheduler) {
    const std::string name = "a name too long to be kept inside the callback itself";
    scheduler->onWake = [this, name] {
        scheduler.reset();
        events.push_back(name);
    };
    tickOnce();
    sleepAndWake();
    sleep.send(SleepNotification::screensDidWake);
    EXPECT_EQ(happenedWithin(10s), Events{name});
    expectNothingLeft();
}

TEST_F(RefreshSchedulerTest, DestructionEndsTimerAndObservers) {
    scheduler->start(RefreshInterval::oneSecond);
    scheduler.reset();
    expectNothingLeft();
    sleepAndWake();
    EXPECT_EQ(happenedWithin(10s), Events{});
}

}  // namespace
}  // namespace thermopix
