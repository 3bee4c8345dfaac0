#include "platform/linux/application/AutostartLoginItem.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>

#include "environment/AppInfo.h"
#include "fakes/TemporaryFolder.h"

namespace thermopix {
namespace {

namespace fs = std::filesystem;

class AutostartLoginItemTest : public testing::Test {
protected:
    AutostartLoginItemTest() {
        places.userFolder = root.path("user").string();
        places.systemFolders = {root.path("system").string()};
        places.currentDesktops = {"XFCE"};
        places.program = program.string();
    }

    [[nodiscard]] AutostartLoginItem item() const { return AutostartLoginItem(places); }

    [[nodiscard]] static fs::path name(const std::string& folder) {
        return fs::path(folder) / "autostart" / (std::string(AppInfo::identifier) + ".desktop");
    }
    [[nodiscard]] fs::path entry(const std::string& folder) const { return root.path() / name(folder); }

    void write(const std::string& folder, const std::string& text) const {
        root.write(name(folder), "[Desktop Entry]\nType=Application\nName=Thermopix\n" + text);
    }
    [[nodiscard]] std::string read(const std::string& folder) const { return root.read(name(folder)); }

    // The Exec line that the program writes for itself.
    [[nodiscard]] std::string ownExec() const {
        AutostartLoginItem::Places other = places;
        other.userFolder = root.path("scratch").string();
        EXPECT_EQ(AutostartLoginItem(other).setEnabled(true), std::nullopt);
        const std::string text = read("scratch");
        const auto start = text.find("Exec=");
        return text.substr(start, text.find('\n', start) - start) + "\n";
    }

    TemporaryFolder root;
    fs::path program = root.script("bin with $ 50% \"quotes\"/thermopix", "");
    AutostartLoginItem::Places places;
};

TEST_F(AutostartLoginItemTest, IsOffWithoutAnEntryAndSwitchesOnAndOffAgain) {
    EXPECT_FALSE(item().isEnabled());
    for (const bool enabled : {true, false}) {
        EXPECT_EQ(item().setEnabled(enabled), std::nullopt);
        EXPECT_EQ(item().isEnabled(), enabled);
        EXPECT_EQ(fs::exists(entry("user")), enabled);
    }
}

TEST_F(AutostartLoginItemTest, LeavesAnEntryThatTheUserHidAloneUntilItIsSwitchedOn) {
    write("user", ownExec() + "Hidden=true\n");
    EXPECT_FALSE(item().isEnabled());
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_NE(read("user").find("Hidden=true"), std::string::npos);
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, JudgesAnEntryByWhatItSays) {
    const std::pair<const char*, bool> entries[] = {
        {"", true},
        {"X-GNOME-Autostart-enabled=false\n", false},
        {"OnlyShowIn=GNOME;\n", false},
        {"OnlyShowIn=GNOME;XFCE;\n", true},
        {"NotShowIn=XFCE;\n", false},
        {"TryExec=/nonexistent/thermopix\n", false},
    };
    for (const auto& [text, isEnabled] : entries) {
        write("user", ownExec() + text);
        EXPECT_EQ(item().isEnabled(), isEnabled) << text;
    }
    write("user", ownExec());
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
    root.link("link-to-thermopix", program);
    write("user", "Exec=" + root.path("link-to-thermopix").string() + "\n");
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
    root.write(name("user"), std::string("\x00\xff not an entry", 15));
    EXPECT_FALSE(item().isEnabled());
    fs::remove(entry("user"));
    fs::create_symlink("/nonexistent", entry("user"));
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, SaysWhyItCannotWrite) {
    root.write("user", "a file in place of the folder");
    const auto refused = item().setEnabled(true);
    ASSERT_TRUE(refused.has_value());
    EXPECT_NE(refused->description.find("autostart"), std::string::npos);
    EXPECT_FALSE(item().isEnabled());
}

}  // namespace
}  // namespace thermopix
