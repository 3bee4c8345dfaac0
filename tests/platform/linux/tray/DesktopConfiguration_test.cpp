#include "platform/linux/tray/DesktopConfiguration.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "fakes/RecordingLog.h"
#include "fakes/TemporaryFolder.h"

namespace thermopix {
namespace {

class DesktopConfiguration : public testing::Test {
protected:
    TrayChoices read(std::string_view text) {
        folder_.write("desktop.conf", text);
        return readDesktopConfiguration(file_, log_);
    }

    [[nodiscard]] std::string complaint(const std::string& what) const {
        return "desktop: " + file_.string() + ": " + what;
    }

    TemporaryFolder folder_;
    std::filesystem::path file_ = folder_.path() / "desktop.conf";
    RecordingLog log_;
};

TEST_F(DesktopConfiguration, WithoutAFileEverythingIsAutomaticAndNothingIsSaid) {
    EXPECT_EQ(readDesktopConfiguration(file_, log_), TrayChoices{});
    EXPECT_TRUE(log_.lines.empty());
}

TEST_F(DesktopConfiguration, ReadsPlaceShapeAndInk) {
    EXPECT_EQ(read("[Desktop]\nPlace=strip\nShape=wide\nInk=#ff8000\n"),
              (TrayChoices{TrayPlace::strip, TrayShapeChoice::wide,
                           TrayInkChoice{TrayInkTone::automatic, RgbaColor{255, 128, 0}}}));
    EXPECT_TRUE(log_.lines.empty());
}

TEST_F(DesktopConfiguration, CaseCommentsAndOtherEntriesDoNotMatter) {
    EXPECT_EQ(read("# mine\n[Other]\nPlace=strip\n[Desktop]\n# here\nInk = Dark \nColour=red\n"),
              (TrayChoices{TrayPlace::automatic, TrayShapeChoice::automatic, TrayInkChoice{TrayInkTone::dark, {}}}));
    EXPECT_TRUE(log_.lines.empty());
}

TEST_F(DesktopConfiguration, ABadValueIsNamedAndTheOthersCount) {
    EXPECT_EQ(read("[Desktop]\nPlace=tray\nShape=round\nInk=#12\n").place, TrayPlace::tray);
    EXPECT_EQ(log_.lines, (std::vector<std::string>{complaint("Shape cannot be \"round\"; ignored"),
                                                    complaint("Ink cannot be \"#12\"; ignored")}));
}

TEST_F(DesktopConfiguration, AnEmptyValueIsNamed) {
    EXPECT_EQ(read("[Desktop]\nPlace=\n"), TrayChoices{});
    EXPECT_EQ(log_.lines, (std::vector<std::string>{complaint("Place cannot be \"\"; ignored")}));
}

TEST_F(DesktopConfiguration, WhatIsNoKeyFileIsNamedOnce) {
    const auto expectComplaint = [this](const char* what) {
        EXPECT_EQ(readDesktopConfiguration(file_, log_), TrayChoices{}) << what;
        ASSERT_EQ(log_.lines.size(), 1U) << what;
        EXPECT_TRUE(log_.lines[0].starts_with(complaint(""))) << log_.lines[0];
        log_.lines.clear();
    };
    for (const auto* text : {"Place: tray\n", "[Desktop]\nPlace=\xff\n"}) {
        folder_.write("desktop.conf", text);
        expectComplaint(text);
    }
    std::filesystem::remove(file_);
    folder_.makeFolder("desktop.conf");
    expectComplaint("a folder");
    std::filesystem::remove(file_);
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);
    expectComplaint("a pipe that nobody writes to");
    std::filesystem::remove(file_);
    folder_.write("desktop.conf", "[Desktop]\nPlace=tray\n" + std::string(64U << 10U, '#'));
    expectComplaint("a file beyond measure");
}

}  // namespace
}  // namespace thermopix
