#include "platform/linux/files/FileUserDefaultsDatabases.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "fakes/TemporaryFolder.h"
#include "platform/linux/files/WriterStage.h"

namespace thermopix {
namespace {

class FileUserDefaultsDatabasesTest : public testing::Test {
protected:
    [[nodiscard]] FileUserDefaultsDatabases made() { return {temporary.path("thermopix"), stage.services()}; }

    TemporaryFolder temporary;
    WriterStage stage;
    FileUserDefaultsDatabases databases = made();
};

TEST_F(FileUserDefaultsDatabasesTest, StandardDatabaseIsTheFolderItself) {
    EXPECT_TRUE(databases.standard()->setData("preferences.v1", "{}"));
    stage.hear();
    EXPECT_EQ(temporary.read("thermopix/preferences.v1"), "{}");
}

TEST_F(FileUserDefaultsDatabasesTest, SuitesLieInFoldersOfTheirOwn) {
    const auto suite = databases.suite("trial");
    ASSERT_NE(suite, nullptr);
    EXPECT_EQ(temporary.entries(), std::vector<std::string>{});
    EXPECT_TRUE(suite->setData("preferences.v1", "{}"));
    EXPECT_EQ(databases.suite("trial")->data("preferences.v1"), "{}");
    stage.hear();
    EXPECT_EQ(temporary.read("thermopix/suites/trial/preferences.v1"), "{}");
    EXPECT_EQ(databases.standard()->data("preferences.v1"), std::nullopt);
    EXPECT_EQ(databases.suite("other")->data("preferences.v1"), std::nullopt);
}

TEST_F(FileUserDefaultsDatabasesTest, LaunchEndsForEveryDatabase) {
    for (const char* folder : {"thermopix", "thermopix/suites/trial"}) {
        temporary.write(std::string(folder) + "/key", "damaged");
    }
    for (const auto& defaults : {databases.standard(), databases.suite("trial")}) {
        EXPECT_EQ(defaults->data("key"), std::nullopt);
        EXPECT_TRUE(defaults->setData("key", "of the launch"));
    }
    databases.endLaunch();
    for (const auto& defaults : {databases.standard(), databases.suite("trial")}) {
        EXPECT_TRUE(defaults->setData("key", "of the user"));
        stage.hear();
    }
    for (const char* folder : {"thermopix", "thermopix/suites/trial"}) {
        EXPECT_EQ(temporary.read(std::string(folder) + "/key"), "of the user");
        EXPECT_EQ(temporary.read(std::string(folder) + "/key.unreadable"), "damaged");
    }
}

TEST_F(FileUserDefaultsDatabasesTest, NamesThatWouldLeaveTheFolderCannotBeOpened) {
    for (const std::string& name :
         {std::string(), std::string("."), std::string(".."), std::string("../thermopix"), std::string("/tmp"),
          std::string("a/b"), std::string("a/"), std::string("a\0b", 3), std::string(256, 's')}) {
        EXPECT_EQ(databases.suite(name), nullptr) << name;
    }
    EXPECT_NE(databases.suite(std::string(255, 's')), nullptr);
    EXPECT_NE(databases.suite("..."), nullptr);
    EXPECT_EQ(temporary.entries(), std::vector<std::string>{});
}

TEST_F(FileUserDefaultsDatabasesTest, LinkThatLeadsOutsideCannotBeOpened) {
    for (const std::string_view folder : {"thermopix/suites/inside", "thermopix/suites-beside", "outside"}) {
        temporary.makeFolder(folder);
    }
    for (const auto& [name, target] :
         std::vector<std::pair<std::string, std::string>>{{"absolute", temporary.path("outside")},
                                                          {"relative", "../../outside"},
                                                          {"chain", "relative"},
                                                          {"beside", "../suites-beside"},
                                                          {"dangling", "nowhere"},
                                                          {"loop", "loop"},
                                                          {"itself", "."}}) {
        temporary.link("thermopix/suites/" + name, target);
        EXPECT_EQ(databases.suite(name), nullptr) << name;
    }
    temporary.link("thermopix/suites/alias", "inside");
    ASSERT_NE(databases.suite("alias"), nullptr);
    EXPECT_TRUE(databases.suite("alias")->setData("key", "x"));
    stage.hear();
    EXPECT_EQ(databases.suite("inside")->data("key"), "x");
}

TEST_F(FileUserDefaultsDatabasesTest, FileInPlaceOfASuiteCannotBeOpened) {
    temporary.write("thermopix/suites/trial", "a file");
    EXPECT_EQ(databases.suite("trial"), nullptr);
}

TEST_F(FileUserDefaultsDatabasesTest, WithoutAFolderNothingIsKept) {
    FileUserDefaultsDatabases none("", stage.services());
    EXPECT_EQ(none.suite("trial"), nullptr);
    EXPECT_FALSE(none.standard()->setData("preferences.v1", "{}"));
}

TEST(SettingsFolder, FollowsTheBaseDirectoryVariables) {
    EXPECT_EQ(settingsFolder({{"XDG_CONFIG_HOME", "/configuration"}, {"HOME", "/home/user"}}),
              "/configuration/thermopix");
    EXPECT_EQ(settingsFolder({{"XDG_CONFIG_HOME", "/configuration/"}}), "/configuration/thermopix");
    EXPECT_EQ(settingsFolder({{"HOME", "/home/user"}}), "/home/user/.config/thermopix");
    EXPECT_EQ(settingsFolder({{"XDG_CONFIG_HOME", ""}, {"HOME", "/home/user"}}), "/home/user/.config/thermopix");
    EXPECT_EQ(settingsFolder({{"XDG_CONFIG_HOME", "relative"}, {"HOME", "/home/user"}}),
              "/home/user/.config/thermopix");
}

TEST(SettingsFolder, IsInTheFolderOfTheConfiguration) {
    EXPECT_EQ(configurationFolder({{"XDG_CONFIG_HOME", "/configuration"}, {"HOME", "/home/user"}}), "/configuration");
    EXPECT_EQ(configurationFolder({{"XDG_CONFIG_HOME", "relative"}, {"HOME", "/home/user"}}), "/home/user/.config");
}

TEST(SettingsFolder, AsksTheUserDatabaseWithoutVariables) {
    const passwd* user = getpwuid(getuid());
    ASSERT_NE(user, nullptr);
    const std::string expected = (std::filesystem::path(user->pw_dir) / ".config/thermopix").native();
    EXPECT_EQ(settingsFolder({}), expected);
    EXPECT_EQ(settingsFolder({{"HOME", ""}}), expected);
    EXPECT_EQ(settingsFolder({{"HOME", "relative"}}), expected);
}

}  // namespace
}  // namespace thermopix
