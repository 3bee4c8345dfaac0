#include "platform/linux/application/AutostartLoginItem.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "environment/AppInfo.h"
#include "environment/LoginItemContract.h"
#include "environment/Notices.h"
#include "fakes/RecordingNotices.h"
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

    [[nodiscard]] AutostartLoginItem item() { return {places, notices}; }

    [[nodiscard]] static fs::path name(const std::string& folder) {
        return fs::path(folder) / "autostart" / (std::string(AppInfo::identifier) + ".desktop");
    }
    [[nodiscard]] fs::path entry(const std::string& folder) const { return root.path() / name(folder); }

    void write(const std::string& folder, const std::string& text) const {
        root.write(name(folder), "[Desktop Entry]\nType=Application\nName=Thermopix\n" + text);
    }
    [[nodiscard]] std::string read(const std::string& folder) const { return root.read(name(folder)); }

    // The Exec line that the program writes for itself.
    [[nodiscard]] std::string ownExec() {
        AutostartLoginItem::Places other = places;
        other.userFolder = root.path("scratch").string();
        other.systemFolders.clear();
        EXPECT_EQ(AutostartLoginItem(other, notices).setEnabled(true), std::nullopt);
        const std::string text = read("scratch");
        const auto start = text.find("Exec=");
        return text.substr(start, text.find('\n', start) - start) + "\n";
    }

    TemporaryFolder root;
    fs::path program = root.script("bin with $ 50% \"quotes\"/thermopix", "");
    AutostartLoginItem::Places places;
    RecordingNotices notices;
};

/// What the user wrote around the program: nothing of it is the program's to change.
constexpr const char* additions =
    "# started late, on purpose\nX-GNOME-Autostart-Delay=20\nName[de]=Thermopix\n\n[Desktop Action x]\nName=x\n";

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
    EXPECT_NE(refused->description.find("another program, /bin/sh"), std::string::npos);
    EXPECT_EQ(read("user"), before);
    ASSERT_EQ(notices.shown.size(), 1U);
    EXPECT_EQ(notices.shown.front(), openAtLoginNotice(refused->description));
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_EQ(read("user"), before);
    EXPECT_EQ(notices.shown.size(), 1U);
}

TEST_F(AutostartLoginItemTest, KeepsTheContract) {
    auto loginItem = item();
    expectLoginItemContract(loginItem);
    write("system", ownExec());
    expectLoginItemContract(loginItem);
    write("user", "Exec=/bin/sh -c true\n");
    expectLoginItemContract(loginItem);
}

TEST_F(AutostartLoginItemTest, TakesOverAnEntryWhoseProgramHasMoved) {
    const fs::path former = root.path("former/thermopix");
    for (const std::string& exec : {former.string() + " --uitest-fake-sensor", std::string("no-such-program -x"),
                                    "\"" + root.path("for mer").string() + "/thermopix\" '--a b' c\\\\ d"}) {
        write("user", "Exec=" + exec + "\n" + additions);
        EXPECT_FALSE(item().isEnabled()) << exec;
        EXPECT_EQ(item().setEnabled(true), std::nullopt) << exec;
        EXPECT_TRUE(item().isEnabled()) << exec;
    }
    const std::string own = ownExec();
    EXPECT_NE(read("user").find(own.substr(0, own.size() - 1) + " '--a b' c\\\\ d\n"), std::string::npos)
        << read("user");
    EXPECT_EQ(notices.shown, std::vector<UserNotice>{});
}

TEST_F(AutostartLoginItemTest, TakesOverAnEntryOfAnotherCopy) {
    const fs::path copy = root.script("copy/thermopix", "");
    write("user", "Exec=" + copy.string() + " --terminal\n");
    EXPECT_TRUE(item().isEnabled()) << "the session starts the other copy";
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_NE(read("user").find(" --terminal\n"), std::string::npos);
    EXPECT_EQ(read("user").find(copy.string()), std::string::npos);
    write("user", "Exec=" + copy.string() + " --terminal\n");
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, ChangesOfAnEntryOnlyWhatItHasTo) {
    const std::string exec = ownExec();
    write("user", exec + additions);
    const std::string before = read("user");
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_EQ(read("user"), before) << "it is on";
    for (const bool enabled : {false, true}) {
        EXPECT_EQ(item().setEnabled(enabled), std::nullopt);
        EXPECT_EQ(item().isEnabled(), enabled);
        for (const char* kept : {"# started late, on purpose\n", "X-GNOME-Autostart-Delay=20\n", "Name[de]=Thermopix\n",
                                 "[Desktop Action x]\n", exec.c_str()}) {
            EXPECT_NE(read("user").find(kept), std::string::npos) << kept << "in\n" << read("user");
        }
    }
}

TEST_F(AutostartLoginItemTest, SwitchesOnWhateverKeepsAnEntryFromStarting) {
    const std::pair<const char*, const char*> entries[] = {
        {"X-GNOME-Autostart-enabled=false\n", "X-GNOME-Autostart-enabled=true\n"},
        {"OnlyShowIn=GNOME;\n", "OnlyShowIn=GNOME;XFCE;\n"},
        {"NotShowIn=XFCE;GNOME;\n", "NotShowIn=GNOME;\n"},
        {"Hidden=true\nX-Kept=1\n", "X-Kept=1\n"},
    };
    for (const auto& [before, after] : entries) {
        write("user", ownExec() + before);
        EXPECT_FALSE(item().isEnabled()) << before;
        EXPECT_EQ(item().setEnabled(true), std::nullopt);
        EXPECT_TRUE(item().isEnabled()) << read("user");
        EXPECT_NE(read("user").find(after), std::string::npos) << read("user");
    }
    write("user", ownExec() + "TryExec=/nonexistent/thermopix\n");
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(item().isEnabled()) << read("user");
    places.currentDesktops.clear();
    write("user", ownExec() + "OnlyShowIn=GNOME;\n");
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(item().isEnabled()) << read("user");
}

TEST_F(AutostartLoginItemTest, WritesThroughASymbolicLink) {
    root.write("dotfiles/autostart", "[Desktop Entry]\nType=Application\nName=Thermopix\n" + ownExec());
    root.link(name("user"), root.path("dotfiles/autostart"));
    for (const bool enabled : {false, true}) {
        EXPECT_EQ(item().setEnabled(enabled), std::nullopt);
        EXPECT_EQ(item().isEnabled(), enabled);
        EXPECT_TRUE(fs::is_symlink(entry("user")));
        EXPECT_EQ(root.read("dotfiles/autostart").find("Hidden=true") == std::string::npos, enabled);
    }
}

TEST_F(AutostartLoginItemTest, KeepsBesideWhatIsNoEntry) {
    root.write(name("user"), "a text of the user's");
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(item().isEnabled());
    EXPECT_EQ(root.read(name("user").string() + ".unreadable"), "a text of the user's");
}

TEST_F(AutostartLoginItemTest, IsUnavailableWithoutAHome) {
    places.userFolder.clear();
    EXPECT_FALSE(item().isEnabled());
    EXPECT_TRUE(item().setEnabled(true).has_value());
    EXPECT_EQ(notices.shown.size(), 1U);
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
    EXPECT_FALSE(fs::exists(entry("user"))) << "the system's entry is enough";
}

TEST_F(AutostartLoginItemTest, WhatTheUserAddedToAHidingCopyStays) {
    write("system", ownExec());
    write("user", ownExec() + additions);
    EXPECT_EQ(item().setEnabled(false), std::nullopt);
    EXPECT_FALSE(item().isEnabled());
    EXPECT_EQ(item().setEnabled(true), std::nullopt);
    EXPECT_TRUE(item().isEnabled());
    EXPECT_NE(read("user").find("X-GNOME-Autostart-Delay=20\n"), std::string::npos);
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
