#include "platform/linux/glib/GLibSignals.h"

#include <gtest/gtest.h>

#include <csignal>
#include <vector>

#include "platform/linux/glib/GLibMainLoop.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;

class GLibSignalsTest : public testing::TestWithParam<int> {};

TEST_P(GLibSignalsTest, TheHandlerRunsOnTheMainLoopEachTime) {
    GLibMainLoop loop;
    int count = 0;
    auto observer = observeUnixSignal(GetParam(), [&] {
        if (++count == 2) {
            loop.quit();
        } else {
            std::raise(GetParam());
        }
    });
    std::raise(GetParam());
    EXPECT_EQ(count, 0) << "Nothing runs inside the signal itself";
    auto deadline = loop.oneShot(60s, [&] { loop.quit(); });
    loop.run();
    EXPECT_EQ(count, 2);
}

INSTANTIATE_TEST_SUITE_P(Signals, GLibSignalsTest, testing::Values(SIGINT, SIGTERM, SIGWINCH));

TEST(GLibSignals, AnEndedObserverReleasesItsHandler) {
    auto value = std::make_shared<int>(0);
    auto observer = observeUnixSignal(SIGWINCH, [value] {});
    EXPECT_EQ(value.use_count(), 2);
    observer.cancel();
    EXPECT_EQ(value.use_count(), 1);
}

TEST(GLibSignals, AnObserverMayEndInsideItsOwnHandler) {
    GLibMainLoop loop;
    Subscription observer;
    observer = observeUnixSignal(SIGWINCH, [&] {
        observer.cancel();
        loop.quit();
    });
    std::raise(SIGWINCH);
    auto deadline = loop.oneShot(60s, [&] { loop.quit(); });
    loop.run();
    EXPECT_FALSE(observer.isActive());
}

TEST(GLibSignals, AWithheldSignalEndsTheProcessNoMore) {
    withholdUnixSignal(SIGHUP);
    std::raise(SIGHUP);
    observeUnixSignal(SIGHUP, [] {}).cancel();
    std::raise(SIGHUP);
    GLibMainLoop loop;
    const auto observer = observeUnixSignal(SIGHUP, [&] { loop.quit(); });
    std::raise(SIGHUP);
    loop.run();
}

}  // namespace
}  // namespace thermopix
