#include "platform/linux/application/AutostartLoginItem.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "environment/AppInfo.h"

namespace thermopix {
namespace {

namespace fs = std::filesystem;

class AutostartLoginItemTest : public testing::Test {
protected:
    AutostartLoginItemTest() {
        std::string pattern = (fs::temp_directory_path() / "thermopix-autostart-XXXXXX").string();
        root = mkdtemp(pattern.data());
        program = root / "bin with $ 50% \"quotes\"" / "thermopix";
        fs::create_directories(program.parent_path());
        std::ofstream(program) << "#!/bin/sh\n";
        fs::permissions(program, fs::perms::owner_all);
        places.userFolder = (root / "user").string();
        places.systemFolders = {(root / "system").string()};
        places.currentDesktops = {"XFCE"};
        places.program = program.string();
    }
    ~AutostartLoginItemTest() override { fs::remove_all(root); }

    [[nodiscard]] AutostartLoginItem item() const { return AutostartLoginItem(places); }

    [[nodiscard]] fs::path entry(const std::string& folder) const {
        return root / folder / "autostart" / (std::string(AppInfo::identifier) + ".desktop");
    }

    void write(const std::string& folder, const std::string& text) const {
        fs::create_directories(entry(folder).parent_path());
        std::ofstream(entry(folder)) << "[Desktop Entry]\nType=Application\nName=Thermopix\n" << text;
    }

    [[nodiscard]] std::string read(const std::string& folder) const {
        std::ostringstream text;
        text << std::ifstream(entry(folder)).rdbuf();
        return text.str();
    }

    // The Exec line that the program writes for itself.
    [[nodiscard]] std::string ownExec() const {
        AutostartLoginItem::Places other = places;
        other.userFolder = (root / "scratch").string();
        EXPECT_EQ(AutostartLoginItem(other).setEnabled(true), std::nullopt);
        const std::string text = read("scratch");
        const auto start = text.find("Exec=");
        return text.substr(start, text.find('\n', start) - start) + "\n";
    }

    fs::path root;
    fs::path program;
    AutostartLoginItem::Places places;
};

TEST_F(AutostartLoginItemTest, IsOffWithoutAnEntry) {
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, SwitchesOnAndOffAgain) {
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(item().isEnabled());
    EXPECT_TRUE(fs::exists(entry("user")));
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_FALSE(item().isEnabled());
    EXPECT_FALSE(fs::exists(entry("user")));
}

TEST_F(AutostartLoginItemTest, ReadsAnEntryThatTheUserHidAsOffAndLeavesItAlone) {
    const std::string text = ownExec() + "Hidden=true\n";
    write("user", text);
    EXPECT_FALSE(item().isEnabled());
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_NE(read("user").find("Hidden=true"), std::string::npos);
}

TEST_F(AutostartLoginItemTest, SwitchesAHiddenEntryOnWhenAsked) {
    write("user", ownExec() + "Hidden=true\n");
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, ReadsADisabledEntryAsOff) {
    write("user", ownExec() + "X-GNOME-Autostart-enabled=false\n");
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, JudgesForTheCurrentDesktop) {
    write("user", ownExec() + "OnlyShowIn=GNOME;\n");
    EXPECT_FALSE(item().isEnabled());
    write("user", ownExec() + "OnlyShowIn=GNOME;XFCE;\n");
    EXPECT_TRUE(item().isEnabled());
    write("user", ownExec() + "NotShowIn=XFCE;\n");
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, ReadsAnEntryWhoseProgramIsMissingAsOff) {
    const std::string exec = ownExec();
    write("user", exec + "TryExec=/nonexistent/thermopix\n");
    EXPECT_FALSE(item().isEnabled());
    write("user", exec);
    fs::remove(program);
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, IsNotFooledByAnEntryThatStartsAnotherProgram) {
    write("user", "Exec=/bin/sh -c true\n");
    const std::string before = read("user");
    EXPECT_FALSE(item().isEnabled());
    const auto refused = item().setEnabled(true);
    ASSERT_TRUE(refused.has_value());
    EXPECT_NE(refused->description.find("another program"), std::string::npos);
    EXPECT_EQ(read("user"), before);
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_EQ(read("user"), before);
}

TEST_F(AutostartLoginItemTest, AcceptsALinkToTheSameProgram) {
    const fs::path link = root / "link-to-thermopix";
    fs::create_symlink(program, link);
    write("user", "Exec=" + link.string() + "\n");
    EXPECT_TRUE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, HidesAnEntryOfTheWholeSystemForTheUserOnly) {
    write("system", ownExec());
    EXPECT_TRUE(item().isEnabled());
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_FALSE(item().isEnabled());
    EXPECT_TRUE(fs::exists(entry("system")));
    EXPECT_NE(read("user").find("Hidden=true"), std::string::npos);
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, ReadsGarbageAsOff) {
    fs::create_directories(entry("user").parent_path());
    std::ofstream(entry("user")) << "\x00\xff not an entry";
    EXPECT_FALSE(item().isEnabled());
    fs::remove(entry("user"));
    fs::create_symlink("/nonexistent", entry("user"));
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, SaysWhyItCannotWrite) {
    std::ofstream(places.userFolder) << "a file in place of the folder";
    const auto refused = item().setEnabled(true);
    ASSERT_TRUE(refused.has_value());
    EXPECT_NE(refused->description.find("autostart"), std::string::npos);
    EXPECT_FALSE(item().isEnabled());
}

}  // namespace
}  // namespace thermopix
