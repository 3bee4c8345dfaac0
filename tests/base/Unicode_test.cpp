#include "base/Unicode.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace thermopix {
namespace {

using Views = std::vector<std::string_view>;

TEST(Unicode, SplitsTextIntoUserPerceivedCharacters) {
    EXPECT_EQ(characters(""), Views{});
    EXPECT_EQ(characters("7°C"), (Views{"7", "°", "C"}));
    EXPECT_EQ(characters("e\u0301!"), (Views{"e\u0301", "!"}));
    EXPECT_EQ(characters("👩‍🚀x"), (Views{"👩‍🚀", "x"}));
    EXPECT_EQ(characters("🇩🇪🇫🇷"), (Views{"🇩🇪", "🇫🇷"}));
    EXPECT_EQ(characters("a🇩🇪é🇫🇷"), (Views{"a", "🇩🇪", "é", "🇫🇷"}));
    EXPECT_EQ(characters("a©\u200D👩x"), (Views{"a", "©\u200D👩", "x"}));
    EXPECT_EQ(characters("a\r\n\r\nb\n\r"), (Views{"a", "\r\n", "\r\n", "b", "\n", "\r"}));
}

TEST(Unicode, CountsEveryInvalidByteAsACharacterOfItsOwn) {
    EXPECT_EQ(characters("a\xff\xfe"
                         "b"),
              (Views{"a", "\xff", "\xfe", "b"}));
    EXPECT_EQ(characterCount("\xc3"), 1U);
}

TEST(Unicode, LowersLettersOfEveryScript) {
    EXPECT_EQ(lowercased("pACC MTR Temp"), "pacc mtr temp");
    EXPECT_EQ(lowercased("ÄΣЖ"), "äσж");
    EXPECT_EQ(lowercased("\u212A"), "k");
    EXPECT_EQ(lowercased("İ"), "i\u0307");
    EXPECT_EQ(lowercased("A\xff"), "a\xff");
}

TEST(Unicode, RepairsInvalidSequences) {
    EXPECT_EQ(repairedUtf8("ok °"), "ok °");
    EXPECT_EQ(repairedUtf8("a\xff"
                           "b\xc3"),
              "a\uFFFDb\uFFFD");
}

TEST(Unicode, PadsToColumnsOfCharactersNotBytes) {
    EXPECT_EQ(paddedRight("°", 3), "°  ");
    EXPECT_EQ(paddedRight("abc", 3), "abc");
    EXPECT_EQ(paddedRight("abcd", 3), "abcd");
}

TEST(Unicode, TrimsTheBlanksOfAsciiOnly) {
    EXPECT_EQ(trimmed(" \t\r\n\v\f"), "");
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed("\t a b \r\n"), "a b");
    EXPECT_EQ(trimmed("\u00A0x"), "\u00A0x");
}

}  // namespace
}  // namespace thermopix
