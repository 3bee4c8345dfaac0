#include "platform/linux/glib/GLibMainLoop.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace thermopix {
namespace {

using namespace std::chrono_literals;

class GLibMainLoopTest : public testing::Test {
protected:
    void post(MainLoop::Work work) { posted.push_back(loop.post(std::move(work))); }

    GLibMainLoop loop;
    std::vector<std::string> told;
    std::vector<Subscription> posted;
};

TEST_F(GLibMainLoopTest, PostedWorkRunsLaterAndInOrder) {
    post([this] { told.emplace_back("first"); });
    post([this] {
        told.emplace_back("second");
        post([this] {
            told.emplace_back("fourth");
            loop.quit();
        });
        told.emplace_back("third");
    });
    EXPECT_TRUE(told.empty());
    loop.run();
    EXPECT_EQ(told, (std::vector<std::string>{"first", "second", "third", "fourth"}));
}

TEST_F(GLibMainLoopTest, WorkPostedByWorkWaitsForAnotherTurn) {
    post([this] {
        post([this] { told.emplace_back("posted"); });
        post([this] { loop.quit(); });
    });
    auto timer = loop.oneShot(0ns, [this] { told.emplace_back("due in the first turn"); });
    loop.run();
    EXPECT_EQ(told, (std::vector<std::string>{"due in the first turn", "posted"}));
}

TEST_F(GLibMainLoopTest, AOneShotTimerRunsOnceAndNotBeforeItsDelay) {
    const auto start = loop.now();
    MainLoop::Duration ranAt{};
    auto timer = loop.oneShot(20ms, [&] {
        told.emplace_back("ran");
        ranAt = loop.now();
    });
    auto end = loop.oneShot(60ms, [this] { loop.quit(); });
    loop.run();
    EXPECT_EQ(told.size(), 1U);
    EXPECT_GE(ranAt - start, 20ms);
}

TEST_F(GLibMainLoopTest, ARepeatingTimerTicksAtOnceAndGoesOn) {
    auto timer = loop.repeating(0ns, 5ms, 1ms, [this] {
        told.emplace_back("tick");
        if (told.size() == 4) {
            loop.quit();
        }
    });
    const auto start = loop.now();
    loop.run();
    EXPECT_EQ(told.size(), 4U);
    EXPECT_GE(loop.now() - start, 15ms);
}

TEST_F(GLibMainLoopTest, ATimerMayDropItselfInsideItsOwnCallback) {
    auto value = std::make_shared<int>(7);
    Subscription timer;
    timer = loop.repeating(0ns, 1ms, 0ns, [this, value, &timer] {
        timer.cancel();
        told.push_back(std::to_string(*value));
        loop.oneShot(0ns, [] {}).cancel();
    });
    auto end = loop.oneShot(20ms, [this] { loop.quit(); });
    loop.run();
    EXPECT_EQ(told, std::vector<std::string>{"7"});
    EXPECT_EQ(value.use_count(), 1);
}

TEST_F(GLibMainLoopTest, ATimerDroppedByAnotherOneThatIsDueWithItDoesNotRun) {
    Subscription second;
    auto first = loop.oneShot(0ns, [&] {
        second.cancel();
        post([this] { loop.quit(); });
    });
    second = loop.oneShot(0ns, [this] { told.emplace_back("second"); });
    loop.run();
    EXPECT_TRUE(told.empty());
}

TEST_F(GLibMainLoopTest, ADroppedTimerNeverRuns) {
    {
        auto dropped = loop.oneShot(1ms, [this] { told.emplace_back("dropped"); });
    }
    auto end = loop.oneShot(10ms, [this] { loop.quit(); });
    loop.run();
    EXPECT_TRUE(told.empty());
}

TEST_F(GLibMainLoopTest, AnEndedOneShotTimerReleasesItsWork) {
    auto value = std::make_shared<int>(0);
    auto timer = loop.oneShot(0ns, [this, value] { loop.quit(); });
    loop.run();
    EXPECT_EQ(value.use_count(), 1);
}

TEST_F(GLibMainLoopTest, QuittingBeforeRunningEndsTheNextRunOnly) {
    loop.quit();
    loop.run();
    post([this] {
        told.emplace_back("ran");
        loop.quit();
    });
    loop.run();
    EXPECT_EQ(told, std::vector<std::string>{"ran"});
}

TEST_F(GLibMainLoopTest, OtherSourcesOfTheDefaultContextAreServed) {
    g_idle_add_once([](gpointer data) { static_cast<GLibMainLoop*>(data)->quit(); }, &loop);
    loop.run();
    EXPECT_EQ(g_main_context_pending(nullptr), FALSE);
}

TEST_F(GLibMainLoopTest, TheBusIsServedBeforeTimersThatAreDue) {
    post([this] {
        told.emplace_back("timer");
        loop.quit();
    });
    // Messages of the bus come with this priority.
    g_idle_add_full(
        G_PRIORITY_DEFAULT,
        [](gpointer data) -> gboolean {
            static_cast<std::vector<std::string>*>(data)->emplace_back("bus");
            return G_SOURCE_REMOVE;
        },
        &told, nullptr);
    loop.run();
    EXPECT_EQ(told, (std::vector<std::string>{"bus", "timer"}));
}

TEST(GLibMainLoop, ASubscriptionMayOutliveTheLoop) {
    auto loop = std::make_unique<GLibMainLoop>();
    auto timer = loop->repeating(1ms, 1ms, 0ns, [] {});
    loop.reset();
    timer.cancel();
    EXPECT_EQ(g_main_context_pending(nullptr), FALSE);
}

TEST(GLibMainLoop, ATimerWithLeewayWaitsForTheWakeUpOfAnother) {
    GLibMainLoop loop;
    std::vector<std::string> told;
    auto patient = loop.repeating(1ms, 1h, 30min, [&] { told.emplace_back("patient"); });
    auto punctual = loop.oneShot(20ms, [&] {
        told.emplace_back("punctual");
        loop.quit();
    });
    loop.run();
    EXPECT_EQ(told, (std::vector<std::string>{"patient", "punctual"}));
}

}  // namespace
}  // namespace thermopix
