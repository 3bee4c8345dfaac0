#include "sensing/LateReading.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

using namespace std::chrono_literals;

constexpr auto interval = 2s;
constexpr std::nullopt_t none = std::nullopt;

TEST(LateReading, ASensorThatWasNeverAskedHasNothingToWaitFor) {
    const LateReading reading;
    EXPECT_EQ(reading.celsius(0s, interval), none);
    EXPECT_FALSE(reading.isAwaited(0s, interval));
    EXPECT_FALSE(reading.isUnderWay());
}

TEST(LateReading, TheFirstAnswerIsAwaitedForTenSeconds) {
    LateReading reading;
    reading.ask(5s);
    EXPECT_TRUE(reading.isUnderWay());
    EXPECT_TRUE(reading.isAwaited(5s, interval));
    EXPECT_TRUE(reading.isAwaited(14999ms, interval));
    EXPECT_FALSE(reading.isAwaited(15s, interval));
    EXPECT_TRUE(reading.isUnderWay());

    reading.answer(20s, 50.0);
    EXPECT_EQ(reading.celsius(20s, interval), 50.0);
}

TEST(LateReading, AnAnswerCountsForThreeIntervalsAndItsOwnRound) {
    LateReading reading;
    reading.ask(0s);
    reading.answer(4s, 50.0);
    EXPECT_EQ(reading.celsius(4s, interval), 50.0);
    EXPECT_EQ(reading.celsius(14s, interval), 50.0);
    EXPECT_EQ(reading.celsius(14s + 1ns, interval), none);
    EXPECT_FALSE(reading.isAwaited(20s, interval)) << "nothing is under way";
}

TEST(LateReading, AFreshAnswerStandsInForTheReadUnderWayAndALapsedOneDoesNot) {
    LateReading reading;
    reading.ask(0s);
    reading.answer(1s, 50.0);
    reading.ask(2s);
    EXPECT_EQ(reading.celsius(8s, interval), 50.0);
    EXPECT_FALSE(reading.isAwaited(8s, interval));
    EXPECT_EQ(reading.celsius(9s, interval), none);
    EXPECT_TRUE(reading.isAwaited(9s, interval));
    EXPECT_FALSE(reading.isAwaited(12s, interval)) << "under way for ten seconds";
}

TEST(LateReading, ASensorThatFailedIsNotAwaitedWhileItsFailureIsFresh) {
    LateReading reading;
    reading.ask(0s);
    reading.answer(1s, none);
    reading.ask(2s);
    EXPECT_EQ(reading.celsius(3s, interval), none);
    EXPECT_FALSE(reading.isAwaited(3s, interval));
    EXPECT_TRUE(reading.isAwaited(9s, interval));
}

}  // namespace
}  // namespace thermopix
