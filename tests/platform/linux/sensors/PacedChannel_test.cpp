#include "platform/linux/sensors/PacedChannel.h"

#include <gtest/gtest.h>

#include "platform/linux/sensors/HeldChannel.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;

constexpr std::nullopt_t none = std::nullopt;

class PacedChannelTest : public ::testing::Test {
protected:
    void poll() {
        polling_ = polling.poll({2s, [this] { ++lateAnswers; }, [this] { ++changes; }});
    }

    void endPolls() { polling_.cancel(); }

    /// Reads until the answer of the reader's thread is there.
    static double readUntilAnswered(PacedChannel& late) {
        for (;;) {
            if (const auto celsius = late.read()) {
                return *celsius;
            }
            std::this_thread::yield();
        }
    }

    /// The work for the main thread, run on this one.
    void serveMain() {
        std::unique_lock lock(mutex);
        posted.wait(lock, [this] { return !works.empty(); });
        for (const auto& work : std::exchange(works, {})) {
            work();
        }
    }

    TestClock clock;
    std::mutex mutex;
    std::condition_variable posted;
    std::vector<std::function<void()>> works;
    SensorPolling polling{clock, [this](std::function<void()> work) {
                              return WakeUp{[this, work = std::move(work)] {
                                                const std::lock_guard lock(mutex);
                                                works.push_back(work);
                                                posted.notify_all();
                                            },
                                            Subscription()};
                          }};
    int lateAnswers = 0;
    int changes = 0;
    std::shared_ptr<HeldChannel> sensor = std::make_shared<HeldChannel>(clock);
    PacedChannel channel{sensor, polling};

private:
    Subscription polling_;
};

TEST_F(PacedChannelTest, WhoDoesNotPollReadsInPlaceHoweverSlowTheSensorIs) {
    sensor->take(2s);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(channel.read(), 50);
    }
    EXPECT_EQ(sensor->readers(), std::vector(3, std::this_thread::get_id()));
}

TEST_F(PacedChannelTest, ASensorThatAnsweredAtOnceIsReadInPlaceFromThenOn) {
    poll();
    EXPECT_EQ(readUntilAnswered(channel), 50);
    sensor->answer(51);
    EXPECT_EQ(channel.read(), 51);
    EXPECT_EQ(channel.read(), 51);
    const auto readers = sensor->readers();
    ASSERT_GE(readers.size(), 3U);
    EXPECT_NE(readers.front(), std::this_thread::get_id());
    EXPECT_EQ(readers.back(), std::this_thread::get_id());
}

TEST_F(PacedChannelTest, ASlowSensorIsNeverWaitedForAndShowsItsLastReading) {
    sensor->take(2s);
    poll();
    EXPECT_EQ(readUntilAnswered(channel), 50);
    sensor->answer(60);
    EXPECT_EQ(readUntilAnswered(channel), 50) << "the last reading, while the next one is made";
    while (readUntilAnswered(channel) != 60) {
    }
    for (const auto reader : sensor->readers()) {
        EXPECT_NE(reader, std::this_thread::get_id());
    }
}

TEST_F(PacedChannelTest, ASensorThatHangsIsAwaitedForTenSecondsAndThenAbsent) {
    sensor->hold();
    poll();
    EXPECT_EQ(channel.read(), none);
    EXPECT_TRUE(channel.isAwaited());
    sensor->awaitReads(1);
    clock.advance(9999ms);
    EXPECT_EQ(channel.read(), none);
    EXPECT_TRUE(channel.isAwaited());
    clock.advance(1ms);
    EXPECT_EQ(channel.read(), none);
    EXPECT_FALSE(channel.isAwaited());
    EXPECT_EQ(sensor->readers().size(), 1U) << "asked once for all polls";

    sensor->release();
    EXPECT_EQ(readUntilAnswered(channel), 50) << "it comes back with its answer";
}

TEST_F(PacedChannelTest, ASensorThatHangsDoesNotHoldUpTheOthersForGood) {
    PacedChannel other(std::make_shared<HeldChannel>(clock, 70), polling);
    sensor->hold();
    poll();
    EXPECT_EQ(channel.read(), none);
    sensor->awaitReads(1);
    clock.advance(SensorReader::stuckAfter + 1ns);
    EXPECT_EQ(readUntilAnswered(other), 70);
    sensor->release();
    EXPECT_EQ(readUntilAnswered(channel), 50);
}

TEST_F(PacedChannelTest, ASensorThatIsReadForLongDoesNotHoldUpTheNextOne) {
    sensor->hold();
    poll();
    EXPECT_EQ(channel.read(), none);
    sensor->awaitReads(1);
    clock.advance(SensorReader::longRead + 1ns);
    const auto other = std::make_shared<HeldChannel>(clock, 61);
    PacedChannel next(other, polling);
    EXPECT_EQ(readUntilAnswered(next), 61);
    sensor->release();
}

TEST_F(PacedChannelTest, WhatWaitsBehindALongReadIsReadAtThePollAfterIt) {
    sensor->hold();
    poll();
    EXPECT_EQ(channel.read(), none);
    sensor->awaitReads(1);
    const auto other = std::make_shared<HeldChannel>(clock, 61);
    PacedChannel next(other, polling);
    EXPECT_EQ(next.read(), none);
    EXPECT_TRUE(other->readers().empty());
    clock.advance(SensorReader::longRead + 1ns);
    EXPECT_EQ(readUntilAnswered(next), 61);
    sensor->release();
}

TEST(SensorReader, HasFourThreadsAtMostBesidesThoseThatAreStuck) {
    TestClock clock;
    SensorReader reader(clock);
    std::vector<std::shared_ptr<HeldChannel>> channels;
    std::vector<std::shared_ptr<SensorReader::Request>> requests;
    const auto ask = [&] {
        channels.push_back(std::make_shared<HeldChannel>(clock));
        channels.back()->hold();
        requests.push_back(reader.ask(channels.back()));
    };
    for (int i = 0; i < SensorReader::mostThreads; ++i) {
        ask();
        channels.back()->awaitReads(1);
        clock.advance(SensorReader::longRead + 1ns);
    }
    ask();
    EXPECT_TRUE(channels.back()->readers().empty());
    clock.advance(SensorReader::stuckAfter);
    EXPECT_FALSE(reader.collect(*requests.back(), 0s).has_value());
    channels.back()->awaitReads(1);
    for (const auto& channel : channels) {
        channel->release();
    }
    for (const auto& request : requests) {
        while (!reader.collect(*request, 0s)) {
            std::this_thread::yield();
        }
    }
}

TEST_F(PacedChannelTest, AnAwaitedAnswerCallsForAPoll) {
    sensor->hold();
    poll();
    EXPECT_EQ(channel.read(), none);
    sensor->awaitReads(1);
    EXPECT_EQ(lateAnswers, 0);
    sensor->release();
    serveMain();
    EXPECT_EQ(lateAnswers, 1);
    EXPECT_EQ(channel.read(), 50);
}

TEST_F(PacedChannelTest, ASlowSensorIsReadInPlaceAgainAfterTenQuickReads) {
    sensor->take(21ms);
    poll();
    EXPECT_EQ(readUntilAnswered(channel), 50);
    sensor->take(0ms);
    while (sensor->readers().back() != std::this_thread::get_id()) {
        static_cast<void>(channel.read());
        std::this_thread::yield();
    }
    EXPECT_EQ(sensor->readers().size(), 1U + ReadPace::quickReadsToRecover + 1U);
}

TEST_F(PacedChannelTest, ASensorThatFailsIsNotAwaited) {
    sensor->answer(none);
    poll();
    static_cast<void>(channel.read());
    while (channel.isUnderWay()) {
        EXPECT_EQ(channel.read(), none);
        std::this_thread::yield();
    }
    EXPECT_FALSE(channel.isAwaited());
}

TEST_F(PacedChannelTest, ASensorThatIsGoneIsToldOnceForEachDiscoveryAndNotRightAfterOne) {
    poll();
    EXPECT_EQ(readUntilAnswered(channel), 50);
    sensor->answer(none);
    sensor->leave();
    polling.noteDiscovery();
    clock.advance(SensorPolling::betweenDiscoveries - 1ns);
    EXPECT_EQ(channel.read(), none);
    EXPECT_EQ(changes, 0);
    clock.advance(1ns);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(channel.read(), none);
    }
    EXPECT_EQ(changes, 1);
    polling.noteDiscovery();
    clock.advance(SensorPolling::betweenDiscoveries);
    EXPECT_EQ(channel.read(), none);
    EXPECT_EQ(changes, 2);
}

TEST_F(PacedChannelTest, NobodyIsToldOncePollsHaveEnded) {
    poll();
    polling.noteChange();
    EXPECT_EQ(changes, 1);
    endPolls();
    polling.noteChange();
    EXPECT_EQ(changes, 1);
}

TEST(SensorReader, EndsWhileAReadIsStuck) {
    TestClock clock;
    const auto stuck = std::make_shared<HeldChannel>(clock);
    stuck->hold();
    {
        SensorReader reader(clock);
        const auto request = reader.ask(stuck);
        stuck->awaitReads(1);
        EXPECT_FALSE(reader.collect(*request, 0s).has_value());
    }
    stuck->release();
    while (stuck.use_count() > 1) {
        std::this_thread::yield();
    }
}

}  // namespace
}  // namespace thermopix
