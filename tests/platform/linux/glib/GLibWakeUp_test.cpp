#include "platform/linux/glib/GLibWakeUp.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "platform/linux/glib/GLibMainLoop.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;

TEST(GLibWakeUp, WhatAnotherThreadRaisesRunsOnTheMainLoop) {
    GLibMainLoop loop;
    std::thread::id ranOn;
    const auto wakeUp = makeWakeUp([&] {
        ranOn = std::this_thread::get_id();
        loop.quit();
    });
    std::thread other([raise = wakeUp.raise] { raise(); });
    auto deadline = loop.oneShot(60s, [&] { loop.quit(); });
    loop.run();
    other.join();
    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST(GLibWakeUp, RunsOnceForWhatWasRaisedBeforeAndAgainForWhatComesMeanwhile) {
    GLibMainLoop loop;
    int count = 0;
    std::function<void()> raise;
    const auto wakeUp = makeWakeUp([&] {
        if (++count == 1) {
            raise();
        } else {
            loop.quit();
        }
    });
    raise = wakeUp.raise;
    raise();
    raise();
    EXPECT_EQ(count, 0) << "Nothing runs in the call itself";
    auto deadline = loop.oneShot(60s, [&] { loop.quit(); });
    loop.run();
    EXPECT_EQ(count, 2);
}

TEST(GLibWakeUp, DoesNothingAfterItsEnd) {
    GLibMainLoop loop;
    auto value = std::make_shared<int>(0);
    auto wakeUp = makeWakeUp([value] { ++*value; });
    wakeUp.raise();
    wakeUp.registration.cancel();
    wakeUp.raise();
    auto later = loop.post([&] { loop.quit(); });
    loop.run();
    EXPECT_EQ(*value, 0);
    EXPECT_EQ(value.use_count(), 1) << "The work is released";
}

}  // namespace
}  // namespace thermopix
