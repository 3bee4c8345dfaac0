#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "fakes/MemoryUserDefaults.h"
#include "fakes/RecordingLog.h"
#include "fakes/TemporaryFolder.h"
#include "platform/linux/files/FileUserDefaults.h"

namespace thermopix {
namespace {

struct InMemory {
    UserDefaults& defaults() { return memory; }

    MemoryUserDefaults memory;
};

struct InFiles {
    UserDefaults& defaults() { return files; }

    TemporaryFolder folder;
    RecordingLog log;
    FileUserDefaults files{folder.path("made/when/needed"), log};
};

/// What every database keeps, wherever its bytes are.
template <typename Place>
class UserDefaultsContract : public testing::Test {
protected:
    UserDefaults& defaults() { return place.defaults(); }

    Place place;
};

using Places = testing::Types<InMemory, InFiles>;
TYPED_TEST_SUITE(UserDefaultsContract, Places);

TYPED_TEST(UserDefaultsContract, HoldsNothingAtFirst) {
    EXPECT_EQ(this->defaults().data("preferences.v1"), std::nullopt);
}

TYPED_TEST(UserDefaultsContract, AnswersTheBytesLastStored) {
    EXPECT_TRUE(this->defaults().setData("preferences.v1", "a longer first value"));
    EXPECT_TRUE(this->defaults().setData("preferences.v1", "second"));
    EXPECT_EQ(this->defaults().data("preferences.v1"), "second");
}

TYPED_TEST(UserDefaultsContract, StoresTheSameBytesAgain) {
    EXPECT_TRUE(this->defaults().setData("preferences.v1", "same"));
    EXPECT_TRUE(this->defaults().setData("preferences.v1", "same"));
    EXPECT_EQ(this->defaults().data("preferences.v1"), "same");
}

TYPED_TEST(UserDefaultsContract, KeepsKeysApart) {
    EXPECT_TRUE(this->defaults().setData("one", "1"));
    EXPECT_TRUE(this->defaults().setData("One", "2"));
    EXPECT_TRUE(this->defaults().setData("one.v1", "3"));
    EXPECT_EQ(this->defaults().data("one"), "1");
    EXPECT_EQ(this->defaults().data("One"), "2");
    EXPECT_EQ(this->defaults().data("one.v1"), "3");
    EXPECT_EQ(this->defaults().data("on"), std::nullopt);
}

TYPED_TEST(UserDefaultsContract, NoBytesAreAValue) {
    EXPECT_TRUE(this->defaults().setData("empty", ""));
    EXPECT_EQ(this->defaults().data("empty"), "");
}

TYPED_TEST(UserDefaultsContract, TakesAnyBytes) {
    const std::string bytes("\0\xff\n\r\0x", 6);
    EXPECT_TRUE(this->defaults().setData("bytes", bytes));
    EXPECT_EQ(this->defaults().data("bytes"), bytes);
}

TYPED_TEST(UserDefaultsContract, TakesManyBytes) {
    const std::string bytes(300'000, 'x');
    EXPECT_TRUE(this->defaults().setData("bytes", bytes));
    EXPECT_EQ(this->defaults().data("bytes"), bytes);
}

TYPED_TEST(UserDefaultsContract, TakesKeysOfUnusualCharacters) {
    for (const std::string_view key : {" ", "~", "-", "*", "\n", "°", ".hidden", "...", "a b"}) {
        EXPECT_TRUE(this->defaults().setData(key, key)) << key;
        EXPECT_EQ(this->defaults().data(key), key);
    }
}

}  // namespace
}  // namespace thermopix
