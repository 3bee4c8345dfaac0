#include "platform/linux/files/FileUserDefaults.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "environment/PreferencesStore.h"
#include "fakes/TemporaryFolder.h"
#include "platform/linux/files/WriterStage.h"
#include "system/StorageLimits.h"

namespace thermopix {
namespace {

using Names = std::vector<std::string>;

constexpr std::string_view key = "preferences.v1";

class FileUserDefaultsTest : public testing::Test {
protected:
    /// As at the start of a program on the same folder.
    [[nodiscard]] FileUserDefaults made() { return {temporary.path("settings"), makeWriter()}; }

    std::shared_ptr<SettingsWriter> makeWriter() { return std::make_shared<SettingsWriter>(stage.services()); }

    [[nodiscard]] std::string complaint(const std::string& cause) const {
        return "settings: cannot read " + temporary.path("settings/preferences.v1").string() + ": " + cause +
               "; it stays as it is until a setting is changed";
    }

    TemporaryFolder temporary;
    WriterStage stage;
};

TEST_F(FileUserDefaultsTest, KeepsEachKeyInAFileOfItsName) {
    EXPECT_TRUE(made().setData(key, "{}"));
    EXPECT_EQ(temporary.entries("settings"), Names{"preferences.v1"});
    EXPECT_EQ(temporary.read("settings/preferences.v1"), "{}");
    EXPECT_EQ(made().data(key), "{}") << "what an earlier process stored";
}

TEST_F(FileUserDefaultsTest, ReadingMakesNothing) {
    EXPECT_EQ(made().data(key), std::nullopt);
    EXPECT_EQ(temporary.entries(), Names{});
    EXPECT_EQ(stage.log.lines, Names{});
}

TEST_F(FileUserDefaultsTest, NewestBytesAreToldBeforeTheyAreStored) {
    const Gate gate;
    FileOperations stuck;
    stuck.synchronize = [gate](int /*descriptor*/) {
        gate.pass();
        return 0;
    };
    FileUserDefaults defaults(temporary.path("settings"),
                              std::make_shared<SettingsWriter>(stage.services(), std::move(stuck)));
    EXPECT_TRUE(defaults.setData(key, "new"));
    EXPECT_EQ(defaults.data(key), "new");
    EXPECT_FALSE(std::filesystem::exists(temporary.path("settings/preferences.v1")));
    gate.open();
}

TEST_F(FileUserDefaultsTest, AFileIsReadOnce) {
    temporary.write("settings/preferences.v1", "old");
    const auto defaults = made();
    EXPECT_EQ(defaults.data(key), "old");
    temporary.write("settings/preferences.v1", "of another program");
    EXPECT_EQ(defaults.data(key), "old");
}

TEST_F(FileUserDefaultsTest, TheSameBytesAreNotWrittenAgain) {
    temporary.write("settings/preferences.v1", "same");
    auto defaults = made();
    EXPECT_TRUE(defaults.setData(key, "same"));
    temporary.write("settings/preferences.v1", "of another program");
    EXPECT_TRUE(defaults.setData(key, "same"));
    defaults = made();
    EXPECT_EQ(defaults.data(key), "of another program");
}

TEST_F(FileUserDefaultsTest, KeysThatAreNoPlainFileNamesHoldNothing) {
    temporary.write("outside", "secret");
    temporary.makeFolder("settings");
    const std::string longest(255, 'k');
    {
        auto defaults = made();
        for (const std::string& bad :
             {std::string(), std::string("."), std::string(".."), std::string("../outside"),
              std::string("/etc/hostname"), std::string("a/b"), std::string("a/"), std::string("a\0b", 3),
              std::string(1, '\0'), std::string(256, 'k'), std::string(".thermopix-new-1-0")}) {
            EXPECT_EQ(defaults.data(bad), std::nullopt) << bad;
            EXPECT_FALSE(defaults.setData(bad, "x")) << bad;
        }
        EXPECT_TRUE(defaults.setData(longest, "x"));
    }
    EXPECT_EQ(temporary.entries("settings"), Names{longest});
    EXPECT_EQ(temporary.read("outside"), "secret");
    EXPECT_EQ(made().data(longest), "x");
}

TEST_F(FileUserDefaultsTest, EmptyFolderPathHoldsNothing) {
    FileUserDefaults defaults("", makeWriter());
    EXPECT_FALSE(defaults.setData("thermopix-test-key", "x"));
    EXPECT_EQ(defaults.data("thermopix-test-key"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists("/thermopix-test-key"));
}

TEST_F(FileUserDefaultsTest, BytesThatCouldNotBeReadAgainAreRefused) {
    auto defaults = made();
    EXPECT_TRUE(defaults.setData(key, std::string(StorageLimits::largestFile, 'x')));
    EXPECT_FALSE(defaults.setData(key, std::string(StorageLimits::largestFile + 1, 'x')));
    EXPECT_EQ(defaults.data(key)->size(), StorageLimits::largestFile);
}

TEST_F(FileUserDefaultsTest, FileThatCannotBeReadStaysDuringTheLaunch) {
    for (const auto& [bytes, cause] : {std::pair(std::string("damaged"), "Not a settings record"),
                                       std::pair(std::string(StorageLimits::largestFile + 1, ' '), "File too large")}) {
        temporary.write("settings/preferences.v1", bytes);
        stage.log.lines.clear();
        {
            auto defaults = made();
            EXPECT_EQ(defaults.data(key), std::nullopt);
            EXPECT_EQ(defaults.data(key), std::nullopt);
            EXPECT_TRUE(defaults.setData(key, "defaults"));
            EXPECT_EQ(defaults.data(key), "defaults");
            defaults.endLaunch();
            EXPECT_TRUE(defaults.setData(key, "defaults")) << "nothing has changed";
        }
        EXPECT_EQ(stage.log.lines, Names{complaint(cause)});
        EXPECT_EQ(temporary.read("settings/preferences.v1"), bytes);
        EXPECT_EQ(temporary.entries("settings"), Names{"preferences.v1"});
    }
}

TEST_F(FileUserDefaultsTest, FileThatCannotBeReadIsKeptWhenTheUserChangesSomething) {
    temporary.write("settings/preferences.v1", "damaged");
    {
        auto defaults = made();
        EXPECT_EQ(defaults.data(key), std::nullopt);
        EXPECT_TRUE(defaults.setData(key, "defaults"));
        defaults.endLaunch();
        EXPECT_TRUE(defaults.setData(key, "a choice"));
        EXPECT_TRUE(defaults.setData(key, "defaults"));
    }
    EXPECT_EQ(temporary.read("settings/preferences.v1"), "defaults");
    EXPECT_EQ(temporary.read("settings/preferences.v1.unreadable"), "damaged");
    EXPECT_EQ(temporary.entries("settings"), (Names{"preferences.v1", "preferences.v1.unreadable"}));
}

TEST_F(FileUserDefaultsTest, FileThatHasBecomeReadableSinceIsKeptToo) {
    temporary.write("settings/preferences.v1", "damaged");
    {
        auto defaults = made();
        EXPECT_EQ(defaults.data(key), std::nullopt);
        temporary.write("settings/preferences.v1", "whole again");
        defaults.endLaunch();
        EXPECT_TRUE(defaults.setData(key, "a choice"));
    }
    EXPECT_EQ(temporary.read("settings/preferences.v1"), "a choice");
    EXPECT_EQ(temporary.read("settings/preferences.v1.unreadable"), "whole again");
}

TEST_F(FileUserDefaultsTest, FileThatIsMissingOrSoundIsWrittenDuringTheLaunch) {
    temporary.write("settings/sound", "old");
    {
        auto defaults = made();
        EXPECT_EQ(defaults.data("sound"), "old");
        EXPECT_TRUE(defaults.setData("sound", "new"));
        EXPECT_EQ(defaults.data("missing"), std::nullopt);
        EXPECT_TRUE(defaults.setData("missing", "new"));
    }
    EXPECT_EQ(temporary.read("settings/sound"), "new");
    EXPECT_EQ(temporary.read("settings/missing"), "new");
    EXPECT_EQ(temporary.entries("settings"), (Names{"missing", "sound"}));
}

TEST_F(FileUserDefaultsTest, StoreGoesOnWhenNothingCanBeSaved) {
    temporary.write("settings", "a file in the way");
    PreferencesStore store(std::make_shared<FileUserDefaults>(temporary.path("settings"), makeWriter()));
    store.set(&Preferences::pet, PixelPet::mac);
    store.set(&Preferences::pet, PixelPet::ghost);
    EXPECT_EQ(store.preferences().pet, PixelPet::ghost);
}

}  // namespace
}  // namespace thermopix
