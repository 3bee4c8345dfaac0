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

TEST(Subscription, EndsThePreviousRegistrationWhenReplaced) {
    int ended = 0;
    Subscription subscription([&] { ++ended; });
    subscription = Subscription();
    EXPECT_EQ(ended, 1);
}

}  // namespace
}  // namespace thermopix
