#include "platform/linux/files/CompanionProgram.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "fakes/TemporaryFolder.h"

namespace thermopix {
namespace {

namespace fs = std::filesystem;

class CompanionProgramTest : public testing::Test {
protected:
    [[nodiscard]] fs::path install(const std::string& place) const {
        folder.write(place, "");
        fs::permissions(folder.path(place), fs::perms::owner_all);
        return folder.path(place);
    }

    [[nodiscard]] std::optional<fs::path> found() const { return companionProgram(folder.path("bin"), "helper"); }

    TemporaryFolder folder;
};

TEST_F(CompanionProgramTest, standsBesideTheProgramOrInItsLibraryFolders) {
    EXPECT_EQ(found(), std::nullopt);
    for (const char* place : {"lib/thermopix/helper", "libexec/thermopix/helper", "bin/helper"}) {
        // Each goes before those above.
        const fs::path installed = install(place);
        EXPECT_EQ(found(), installed);
    }
}

TEST_F(CompanionProgramTest, isAFileThatMayBeExecuted) {
    fs::create_directories(folder.path("bin/helper"));
    folder.write("libexec/thermopix/helper", "not a program");
    EXPECT_EQ(found(), std::nullopt);
    const fs::path program = install("lib/thermopix/helper");
    EXPECT_EQ(found(), program);
}

TEST_F(CompanionProgramTest, isTheOneOfItsNameOnly) {
    [[maybe_unused]] const fs::path other = install("bin/helper-of-another");
    EXPECT_EQ(found(), std::nullopt);
}

TEST(RunningProgram, isThisTest) {
    EXPECT_EQ(runningProgram().filename(), "thermopix_linux_files_tests");
}

}  // namespace
}  // namespace thermopix
