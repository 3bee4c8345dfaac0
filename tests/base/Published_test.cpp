#include "base/Published.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace thermopix {
namespace {

TEST(Published, DeliversTheCurrentValueAtOnce) {
    Published<int> published(7);
    std::vector<int> heard;
    const auto subscription = published.subscribe([&](int value) { heard.push_back(value); });
    EXPECT_EQ(heard, std::vector{7});
}

TEST(Published, TellsSubscribersBeforeItsOwnValueChanges) {
    Published<int> published(1);
    std::vector<int> seenAsCurrent;
    const auto subscription = published.subscribe([&](int) { seenAsCurrent.push_back(published.value()); });
    published.send(2);
    EXPECT_EQ(seenAsCurrent, (std::vector{1, 1}));
    EXPECT_EQ(published.value(), 2);
}

TEST(Published, TellsNobodyAfterTheSubscriptionEnds) {
    Published<int> published(1);
    int heard = 0;
    {
        const auto subscription = published.subscribe([&](int) { ++heard; });
        published.send(2);
    }
    published.send(3);
    EXPECT_EQ(heard, 2);
}

TEST(Published, LetsASubscriberEndItsSubscriptionInsideItsCallback) {
    Published<int> published(0);
    int heard = 0;
    Subscription subscription;
    subscription = published.subscribe([&](int value) {
        ++heard;
        if (value == 1) {
            subscription.cancel();
            ++heard;
        }
    });
    published.send(1);
    published.send(2);
    EXPECT_EQ(heard, 3);
}

TEST(Published, DoesNotTellASubscriberThatAnEarlierOneRemoved) {
    Published<int> published(0);
    Subscription second;
    int heardBySecond = 0;
    const auto first = published.subscribe([&](int value) {
        if (value == 1) {
            second.cancel();
        }
    });
    second = published.subscribe([&](int) { ++heardBySecond; });
    published.send(1);
    EXPECT_EQ(heardBySecond, 1);
}

TEST(Published, TellsANewcomerOfTheNextValueOnly) {
    Published<int> published(0);
    std::vector<int> heardByNewcomer;
    Subscription newcomer;
    const auto first = published.subscribe([&](int value) {
        if (value == 1) {
            newcomer = published.subscribe([&](int later) { heardByNewcomer.push_back(later); });
        }
    });
    published.send(1);
    published.send(2);
    EXPECT_EQ(heardByNewcomer, (std::vector{0, 2}));
}

TEST(Published, MayEndBeforeItsSubscriptions) {
    Subscription subscription;
    {
        Published<int> published(0);
        subscription = published.subscribe([](int) {});
    }
    EXPECT_TRUE(subscription.isActive());
    subscription.cancel();
    EXPECT_FALSE(subscription.isActive());
}

TEST(Subscription, EndsThePreviousRegistrationWhenReplaced) {
    int ended = 0;
    Subscription subscription([&] { ++ended; });
    subscription = Subscription();
    EXPECT_EQ(ended, 1);
}

}  // namespace
}  // namespace thermopix
