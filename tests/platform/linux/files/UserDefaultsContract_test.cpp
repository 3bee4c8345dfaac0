#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fakes/MemoryUserDefaults.h"
#include "fakes/TemporaryFolder.h"
#include "platform/linux/files/FileUserDefaults.h"
#include "platform/linux/files/WriterStage.h"

namespace thermopix {
namespace {

struct InMemory {
    UserDefaults& defaults() { return memory; }

    MemoryUserDefaults memory;
};

struct InFiles {
    UserDefaults& defaults() { return files; }

    TemporaryFolder folder;
    WriterStage stage;
    FileUserDefaults files{folder.path("made/when/needed"), std::make_shared<SettingsWriter>(stage.services())};
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

TYPED_TEST(UserDefaultsContract, AnswersTheBytesLastStoredWhateverTheyAre) {
    EXPECT_EQ(this->defaults().data("preferences.v1"), std::nullopt);
    for (const std::string& bytes : {std::string("a longer first value"), std::string("second"), std::string("second"),
                                     std::string(), std::string("\0\xff\n\r\0x", 6), std::string(60'000, 'x')}) {
        EXPECT_TRUE(this->defaults().setData("preferences.v1", bytes));
        EXPECT_EQ(this->defaults().data("preferences.v1"), bytes);
    }
}

TYPED_TEST(UserDefaultsContract, KeepsKeysApartWhateverTheirCharacters) {
    const std::vector<std::string_view> keys{"one", "One", "one.v1", " ",       "~",   "-",
                                             "*",   "\n",  "°",      ".hidden", "...", "a b"};
    for (const auto key : keys) {
        EXPECT_TRUE(this->defaults().setData(key, key)) << key;
    }
    for (const auto key : keys) {
        EXPECT_EQ(this->defaults().data(key), key);
    }
    EXPECT_EQ(this->defaults().data("on"), std::nullopt);
}

}  // namespace
}  // namespace thermopix
