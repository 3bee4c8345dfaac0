#include "platform/macos/settings/HandlerList.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace thermopix {
namespace {

TEST(HandlerListTest, HandlersAreToldInTheOrderInWhichTheyWereAdded) {
    HandlerList<int> list;
    std::vector<std::string> told;
    const auto first = list.add([&](int value) { told.push_back("first " + std::to_string(value)); });
    const auto second = list.add([&](int value) { told.push_back("second " + std::to_string(value)); });
    list.tell(7);
    EXPECT_EQ(told, (std::vector<std::string>{"first 7", "second 7"}));
}

TEST(HandlerListTest, ADroppedHandlerIsNotToldAnyMore) {
    HandlerList<> list;
    int calls = 0;
    {
        const auto handler = list.add([&] { ++calls; });
        list.tell();
    }
    list.tell();
    EXPECT_EQ(calls, 1);
}

TEST(HandlerListTest, AHandlerMayEndItselfAndAddOthers) {
    HandlerList<> list;
    int calls = 0;
    Subscription self;
    Subscription added;
    self = list.add([&] {
        self.cancel();
        added = list.add([&] { ++calls; });
    });
    list.tell();
    EXPECT_EQ(calls, 0) << "told of what happened before it was added";
    list.tell();
    EXPECT_EQ(calls, 1);
}

TEST(HandlerListTest, ASubscriptionMayOutliveItsList) {
    Subscription left;
    {
        HandlerList<> list;
        left = list.add([] {});
    }
    left.cancel();
    EXPECT_FALSE(left.isActive());
}

}  // namespace
}  // namespace thermopix
