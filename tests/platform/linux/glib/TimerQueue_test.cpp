#include "platform/linux/glib/TimerQueue.h"

#include <gtest/gtest.h>

#include <vector>

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Duration = TimerQueue::Duration;
using Id = TimerQueue::Id;

std::vector<Id> takeAllDue(TimerQueue& queue, Duration now) {
    std::vector<Id> taken;
    while (const auto id = queue.takeDue(now)) {
        taken.push_back(*id);
    }
    return taken;
}

TEST(TimerQueue, AnEmptyQueueNeverWakesUp) {
    TimerQueue queue;
    EXPECT_EQ(queue.nextWakeUp(), std::nullopt);
    EXPECT_EQ(queue.takeDue(1h), std::nullopt);
}

TEST(TimerQueue, AOneShotTimerIsDueAtItsDeadlineAndThenGone) {
    TimerQueue queue;
    const auto id = queue.addOnce(160ms);
    EXPECT_EQ(queue.nextWakeUp(), 160ms);
    EXPECT_EQ(queue.takeDue(160ms - 1ns), std::nullopt);
    EXPECT_TRUE(queue.contains(id));
    EXPECT_EQ(queue.takeDue(160ms), id);
    EXPECT_FALSE(queue.contains(id));
    EXPECT_EQ(queue.nextWakeUp(), std::nullopt);
}

TEST(TimerQueue, ARepeatingTimerWakesUpAtTheEndOfItsLeewayAndKeepsItsOwnTimetable) {
    TimerQueue queue;
    const auto id = queue.addRepeating(0s, 2s, 2s, 500ms);
    EXPECT_EQ(queue.nextWakeUp(), 2500ms);
    EXPECT_EQ(takeAllDue(queue, 2500ms), std::vector{id});
    EXPECT_EQ(queue.nextWakeUp(), 4500ms);
    EXPECT_EQ(takeAllDue(queue, 4700ms), std::vector{id});
    EXPECT_EQ(queue.nextWakeUp(), 6500ms) << "A late wake-up moves nothing that comes after it";
    EXPECT_TRUE(queue.contains(id));
}

TEST(TimerQueue, AFirstDeadlineThatIsNowDoesNotWaitForItsLeeway) {
    TimerQueue queue;
    const auto id = queue.addRepeating(10s, 10s, 2s, 500ms);
    EXPECT_EQ(queue.nextWakeUp(), 10s);
    EXPECT_EQ(takeAllDue(queue, 10s), std::vector{id});
    EXPECT_EQ(queue.nextWakeUp(), 12500ms);
}

TEST(TimerQueue, ATimerIsNeverEarlyHoweverOftenTheQueueIsAsked) {
    TimerQueue queue;
    const auto id = queue.addRepeating(0s, 2s, 2s, 500ms);
    EXPECT_EQ(queue.takeDue(1999ms), std::nullopt);
    EXPECT_EQ(takeAllDue(queue, 2s), std::vector{id});
    EXPECT_EQ(queue.takeDue(3999ms), std::nullopt);
}

TEST(TimerQueue, DeadlinesInsideOneAnothersLeewayShareAWakeUpInTheOrderOfTheirDeadlines) {
    TimerQueue queue;
    const auto tick = queue.addRepeating(0s, 2s, 2s, 500ms);
    const auto blink = queue.addRepeating(0s, 1900ms, 5500ms, 400ms);
    EXPECT_EQ(queue.nextWakeUp(), 2300ms);
    EXPECT_EQ(takeAllDue(queue, 2300ms), (std::vector{blink, tick}));
}

TEST(TimerQueue, EqualDeadlinesAreServedInTheOrderOfMaking) {
    TimerQueue queue;
    const auto first = queue.addOnce(1s);
    const auto second = queue.addRepeating(0s, 1s, 1s, 0s);
    const auto third = queue.addOnce(1s);
    EXPECT_EQ(takeAllDue(queue, 1s), (std::vector{first, second, third}));
}

TEST(TimerQueue, AfterALongStallARepeatingTimerFiresOnceAndGoesOnInItsOwnRhythm) {
    TimerQueue queue;
    const auto id = queue.addRepeating(0s, 2s, 2s, 500ms);
    EXPECT_EQ(takeAllDue(queue, 1001s), std::vector{id});
    EXPECT_EQ(queue.nextWakeUp(), 1002500ms);
}

TEST(TimerQueue, AStallThatEndsOnADeadlineWaitsForTheNextOne) {
    TimerQueue queue;
    const auto id = queue.addRepeating(0s, 2s, 2s, 0s);
    EXPECT_EQ(takeAllDue(queue, 10s), std::vector{id});
    EXPECT_EQ(queue.nextWakeUp(), 12s);
}

TEST(TimerQueue, WorkThatEndsBeforeTheNextDeadlineMovesNothing) {
    TimerQueue queue;
    const auto id = queue.addRepeating(0s, 2s, 2s, 500ms);
    EXPECT_EQ(takeAllDue(queue, 2500ms), std::vector{id});
    queue.workEnded(id, 3999ms);
    EXPECT_EQ(queue.nextWakeUp(), 4500ms);
}

TEST(TimerQueue, WorkThatRunsIntoItsNextDeadlineIsFollowedByAWholePeriod) {
    TimerQueue queue;
    const auto id = queue.addRepeating(0s, 2s, 2s, 500ms);
    EXPECT_EQ(takeAllDue(queue, 2500ms), std::vector{id});
    queue.workEnded(id, 9s);
    EXPECT_EQ(queue.takeDue(11s - 1ns), std::nullopt);
    EXPECT_EQ(queue.nextWakeUp(), 11500ms);
}

TEST(TimerQueue, TheEndOfTheWorkOfATimerThatIsOverChangesNothing) {
    TimerQueue queue;
    const auto once = queue.addOnce(1s);
    EXPECT_EQ(takeAllDue(queue, 1s), std::vector{once});
    queue.workEnded(once, 5s);
    EXPECT_EQ(queue.nextWakeUp(), std::nullopt);
}

TEST(TimerQueue, ARemovedTimerIsNotServedAndWakesNobodyUp) {
    TimerQueue queue;
    const auto removed = queue.addOnce(1s);
    const auto kept = queue.addOnce(2s);
    queue.remove(removed);
    queue.remove(removed);
    EXPECT_EQ(queue.nextWakeUp(), 2s);
    EXPECT_EQ(takeAllDue(queue, 5s), std::vector{kept});
}

TEST(TimerQueue, AMinuteAtTheDefaultIntervalCostsThirtyWakeUpsAndTwoMoreForEachBlinkAtMost) {
    const auto wakeUpsInAMinute = [](bool withPet) {
        TimerQueue queue;
        queue.addRepeating(0s, 0s, 2s, 500ms);
        const auto blink = withPet ? queue.addRepeating(0s, 5500ms, 5500ms, 400ms) : Id{};
        int wakeUps = 0;
        int blinks = 0;
        while (*queue.nextWakeUp() < 60s) {
            const auto now = *queue.nextWakeUp();
            ++wakeUps;
            for (const auto id : takeAllDue(queue, now)) {
                if (id == blink) {
                    ++blinks;
                    queue.addOnce(now + 160ms);
                }
            }
        }
        EXPECT_EQ(blinks, withPet ? 10 : 0);
        return wakeUps;
    };
    EXPECT_EQ(wakeUpsInAMinute(false), 30);
    EXPECT_LE(wakeUpsInAMinute(true), 30 + 2 * 10);
    EXPECT_GE(wakeUpsInAMinute(true), 30);
}

TEST(TimerQueueDeathTest, ARepeatingTimerWithoutAPeriodEndsTheProcess) {
    TimerQueue queue;
    EXPECT_DEATH(queue.addRepeating(0s, 1s, 0s, 0s), "a repeating timer needs a period");
}

}  // namespace
}  // namespace thermopix
