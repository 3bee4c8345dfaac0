#include "platform/linux/windows/WindowClient.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "fakes/TemporaryFolder.h"

namespace thermopix {
namespace {

namespace fs = std::filesystem;

class WindowExecutableTest : public testing::Test {
protected:
    [[nodiscard]] std::optional<fs::path> found(const EnvironmentVariables& variables = {}) const {
        return windowExecutable(folder.path() / "bin/thermopix", variables);
    }

    TemporaryFolder folder;
};

TEST_F(WindowExecutableTest, ComesWithTheProgram) {
    EXPECT_EQ(found(), std::nullopt);
    const fs::path installed = folder.script("libexec/thermopix/thermopix-windows", "");
    EXPECT_EQ(found(), installed);
}

TEST_F(WindowExecutableTest, IsTheOneThatTheVariableNamesAndNoOther) {
    folder.script("bin/thermopix-windows", "");
    const fs::path other = folder.script("elsewhere/windows", "");
    EXPECT_EQ(found({{"THERMOPIX_WINDOWS", other.string()}}), other);
    EXPECT_EQ(found({{"THERMOPIX_WINDOWS", (folder.path() / "nowhere").string()}}), std::nullopt);
    EXPECT_EQ(found({{"THERMOPIX_WINDOWS", ""}}), std::nullopt);
}

}  // namespace
}  // namespace thermopix
