#include "fakes/ManualMainLoop.h"

#include <gtest/gtest.h>

#include <string>

namespace thermopix {
namespace {

using namespace std::chrono_literals;

TEST(ManualMainLoop, FiresTimersAtTheirDeadlinesInOrder) {
    ManualMainLoop loop;
    std::string order;
    const auto late = loop.oneShot(20ms, [&] { order += "late "; });
    const auto early = loop.oneShot(10ms, [&] { order += "early "; });
    loop.advance(9ms);
    EXPECT_EQ(order, "");
    loop.advance(11ms);
    EXPECT_EQ(order, "early late ");
}

TEST(ManualMainLoop, RepeatsWithoutDrift) {
    ManualMainLoop loop;
    std::vector<MainLoop::Duration> fired;
    const auto timer = loop.repeating(0ms, 100ms, 25ms, [&] { fired.push_back(loop.now()); });
    loop.advance(250ms);
    EXPECT_EQ(fired, (std::vector<MainLoop::Duration>{0ms, 100ms, 200ms}));
    EXPECT_EQ(loop.scheduled, (std::vector<ManualMainLoop::Scheduled>{{0ms, 0ms, 100ms, 25ms}}));
}

TEST(ManualMainLoop, LetsATimerEndItselfInsideItsCallback) {
    ManualMainLoop loop;
    int fired = 0;
    Subscription timer;
    timer = loop.repeating(1ms, 1ms, 0ms, [&] {
        ++fired;
        timer.cancel();
    });
    loop.advance(10ms);
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(loop.activeTimerCount(), 0U);
}

TEST(ManualMainLoop, RunsPostedWorkInOrderBeforeTimeMovesOn) {
    ManualMainLoop loop;
    std::string order;
    std::vector<Subscription> posted(3);
    posted[0] = loop.post([&] {
        order += "first ";
        posted[2] = loop.post([&] { order += "third "; });
    });
    posted[1] = loop.post([&] { order += "second "; });
    loop.runPending();
    EXPECT_EQ(order, "first second third ");
    EXPECT_EQ(loop.now(), 0ms);
}

}  // namespace
}  // namespace thermopix
