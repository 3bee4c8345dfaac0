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
    [[nodiscard]] std::optional<fs::path> found() const { return companionProgram(folder.path("bin"), "helper"); }

    TemporaryFolder folder;
};

TEST_F(CompanionProgramTest, standsBesideTheProgramOrInItsLibraryFolders) {
    EXPECT_EQ(found(), std::nullopt);
    for (const char* place : {"lib/thermopix/helper", "libexec/thermopix/helper", "bin/helper"}) {
        // Each goes before those above.
        const fs::path installed = folder.script(place, "");
        EXPECT_EQ(found(), installed);
    }
}

TEST_F(CompanionProgramTest, isAFileThatMayBeExecuted) {
    folder.makeFolder("bin/helper");
    folder.write("libexec/thermopix/helper", "not a program");
    EXPECT_EQ(found(), std::nullopt);
    const fs::path program = folder.script("lib/thermopix/helper", "");
    EXPECT_EQ(found(), program);
}

TEST_F(CompanionProgramTest, isTheOneOfItsNameOnly) {
    folder.script("bin/helper-of-another", "");
    EXPECT_EQ(found(), std::nullopt);
}

TEST(RunningProgram, isThisTest) {
    EXPECT_EQ(runningProgram().filename(), "thermopix_linux_files_tests");
}

}  // namespace
}  // namespace thermopix
