#include "sensing/RestartPauses.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

using namespace std::chrono_literals;

TEST(RestartPauses, TheFirstStartIsAtOnce) {
    EXPECT_TRUE(RestartPauses().allowStart(0ns));
}

TEST(RestartPauses, EachFailureDoublesThePauseUpToTheLongest) {
    RestartPauses pauses;
    RestartPauses::Time now = 1h;
    for (const RestartPauses::Time pause : {5s, 10s, 20s, 40s, 80s, 160s, 320s, 600s, 600s}) {
        pauses.started(now);
        now += 10s;
        pauses.failed(now);
        EXPECT_FALSE(pauses.allowStart(now + pause - 1ns)) << pause.count();
        EXPECT_TRUE(pauses.allowStart(now + pause)) << pause.count();
        now += pause;
    }
}

TEST(RestartPauses, AProcessThatHasLastedBeginsThePausesAnew) {
    RestartPauses pauses;
    for (int failure = 0; failure < 3; ++failure) {
        pauses.started(0s);
        pauses.failed(RestartPauses::lasting - 1ns);
    }
    EXPECT_FALSE(pauses.allowStart(RestartPauses::lasting + RestartPauses::shortest));
    pauses.started(100s);
    pauses.failed(100s + RestartPauses::lasting);
    EXPECT_TRUE(pauses.allowStart(100s + RestartPauses::lasting + RestartPauses::shortest));
}

}  // namespace
}  // namespace thermopix
