#include "pixels/Ink.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

TEST(Ink, IsNothingFaintOrOpaque) {
    EXPECT_EQ(alpha(Ink::none), 0.0);
    EXPECT_EQ(alpha(Ink::ghost), 0.12);
    EXPECT_EQ(alpha(Ink::full), 1.0);
}

TEST(Ink, IsMadeFromItsRawValueAndFromNoOther) {
    EXPECT_EQ(inkFromRawValue(0), Ink::none);
    EXPECT_EQ(inkFromRawValue(1), Ink::ghost);
    EXPECT_EQ(inkFromRawValue(2), Ink::full);
    EXPECT_EQ(inkFromRawValue(3), std::nullopt);
    EXPECT_EQ(inkFromRawValue(255), std::nullopt);
}

TEST(Ink, IsWrittenAsOneArtCharacter) {
    for (const Ink ink : {Ink::none, Ink::ghost, Ink::full}) {
        EXPECT_EQ(inkFromArt(artCharacter(ink)), ink);
    }
    EXPECT_EQ(artCharacter(Ink::none), '.');
    EXPECT_EQ(artCharacter(Ink::ghost), ':');
    EXPECT_EQ(artCharacter(Ink::full), '#');
}

TEST(Ink, ReadsEveryOtherCharacterAsNone) {
    for (const char character : {'.', ' ', 'x', '0', '\0', '\xff'}) {
        EXPECT_EQ(inkFromArt(character), Ink::none) << static_cast<int>(character);
    }
}

}  // namespace
}  // namespace thermopix
