#include "base/Observers.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace thermopix {
namespace {

TEST(Observers, HandlersAreToldInTheOrderInWhichTheyWereAdded) {
    Observers<int> observers;
    std::vector<std::string> told;
    const auto first = observers.add([&](int value) { told.push_back("first " + std::to_string(value)); });
    const auto second = observers.add([&](int value) { told.push_back("second " + std::to_string(value)); });
    observers.tell(7);
    EXPECT_EQ(told, (std::vector<std::string>{"first 7", "second 7"}));
}

TEST(Observers, ADroppedHandlerIsNotToldAnyMore) {
    Observers<> observers;
    int calls = 0;
    {
        const auto handler = observers.add([&] { ++calls; });
        observers.tell();
    }
    observers.tell();
    EXPECT_EQ(calls, 1);
}

TEST(Observers, AHandlerMayEndItselfAndAddOthers) {
    Observers<> observers;
    int calls = 0;
    Subscription self;
    Subscription added;
    self = observers.add([&] {
        self.cancel();
        added = observers.add([&] { ++calls; });
    });
    observers.tell();
    EXPECT_EQ(calls, 0) << "told of what happened before it was added";
    observers.tell();
    EXPECT_EQ(calls, 1);
}

TEST(Observers, AHandlerThatAnEarlierOneDroppedIsNotTold) {
    Observers<> observers;
    Subscription second;
    int calls = 0;
    const auto first = observers.add([&] { second.cancel(); });
    second = observers.add([&] { ++calls; });
    observers.tell();
    EXPECT_EQ(calls, 0);
}

TEST(Observers, ASubscriptionMayOutliveItsList) {
    Subscription left;
    {
        Observers<> observers;
        left = observers.add([] {});
    }
    left.cancel();
    EXPECT_FALSE(left.isActive());
}

}  // namespace
}  // namespace thermopix
