#include "platform/linux/windows/WindowExecutable.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "fakes/TemporaryFolder.h"

namespace thermopix {
namespace {

namespace fs = std::filesystem;

class WindowExecutableTest : public testing::Test {
protected:
    fs::path install(const fs::path& place) {
        folder.write(place, "");
        fs::permissions(folder.path() / place, fs::perms::owner_all);
        return folder.path() / place;
    }

    [[nodiscard]] std::optional<fs::path> found(const EnvironmentVariables& variables = {}) const {
        return windowExecutable(folder.path() / "bin/thermopix", variables);
    }

    TemporaryFolder folder;
};

TEST_F(WindowExecutableTest, ComesWithTheProgram) {
    EXPECT_EQ(found(), std::nullopt);
    const fs::path installed = install("libexec/thermopix/thermopix-windows");
    EXPECT_EQ(found(), installed);
}

TEST_F(WindowExecutableTest, IsTheOneThatTheVariableNamesAndNoOther) {
    install("bin/thermopix-windows");
    const fs::path other = install("elsewhere/windows");
    EXPECT_EQ(found({{"THERMOPIX_WINDOWS", other.string()}}), other);
    EXPECT_EQ(found({{"THERMOPIX_WINDOWS", (folder.path() / "nowhere").string()}}), std::nullopt);
    EXPECT_EQ(found({{"THERMOPIX_WINDOWS", ""}}), std::nullopt);
}

}  // namespace
}  // namespace thermopix
