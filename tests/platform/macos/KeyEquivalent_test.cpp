#include "platform/macos/menubar/KeyEquivalent.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

TEST(KeyEquivalentTest, MasksAreThoseOfTheKeysThatAreHeld) {
    EXPECT_EQ(modifierMask(KeyModifiers::command), 0x100000U);
    EXPECT_EQ(modifierMask(KeyModifiers::commandOption), 0x100000U + 0x80000U);
    EXPECT_EQ(modifierMask(KeyModifiers::commandShift), 0x100000U + 0x20000U);
}

}  // namespace
}  // namespace thermopix
