#include <gtest/gtest.h>

#include "environment/FakeLoginItem.h"
#include "environment/LoginItemContract.h"
#include "system/UnavailableLoginItem.h"

namespace thermopix {
namespace {

TEST(FakeLoginItem, StartsAsItIsToldAndStoresWhatIsSet) {
    FakeLoginItem loginItem(true);
    EXPECT_TRUE(loginItem.isEnabled());
    EXPECT_FALSE(loginItem.failNextWrite);
    EXPECT_EQ(loginItem.setEnabled(false), std::nullopt);
    EXPECT_FALSE(loginItem.isEnabled());
}

TEST(FakeLoginItem, FailsOnceForEachArming) {
    FakeLoginItem loginItem(false);
    loginItem.failNextWrite = true;
    EXPECT_EQ(loginItem.setEnabled(true), ServiceError{"file write: no permission"});
    EXPECT_FALSE(loginItem.isEnabled());
    EXPECT_FALSE(loginItem.failNextWrite);

    EXPECT_EQ(loginItem.setEnabled(true), std::nullopt);
    EXPECT_TRUE(loginItem.isEnabled());
}

TEST(FakeLoginItem, KeepsTheContract) {
    FakeLoginItem loginItem(false);
    expectLoginItemContract(loginItem);
    loginItem.failNextWrite = true;
    expectLoginItemContract(loginItem);
}

TEST(UnavailableLoginItem, IsNeverEnabledAndSaysWhyItCannotBe) {
    UnavailableLoginItem loginItem;
    EXPECT_EQ(loginItem.setEnabled(true), ServiceError{"this system offers no way to open programs at login"});
    EXPECT_FALSE(loginItem.isEnabled());
    EXPECT_EQ(loginItem.setEnabled(false), std::nullopt);
    EXPECT_FALSE(loginItem.isEnabled());
}

TEST(UnavailableLoginItem, KeepsTheContract) {
    UnavailableLoginItem loginItem;
    expectLoginItemContract(loginItem);
}

}  // namespace
}  // namespace thermopix
