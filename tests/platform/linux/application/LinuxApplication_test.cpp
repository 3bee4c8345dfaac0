#include "platform/linux/application/LinuxApplication.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "fakes/TemporaryFolder.h"

namespace thermopix {
namespace {

class IsStrangerTest : public testing::Test {
protected:
    void run(std::uint32_t process, const std::string& program) const {
        const auto folder = processes.path(std::to_string(process));
        std::filesystem::create_directories(folder);
        std::filesystem::create_symlink(program, folder / "exe");
    }
    [[nodiscard]] bool strange(std::uint32_t process) const {
        return isStranger(process, "/usr/bin/thermopix", processes.path());
    }

    TemporaryFolder processes;
};

TEST_F(IsStrangerTest, ComparesTheFilesOfTheProgramsWhereverTheyAre) {
    run(10, "/usr/bin/thermopix");
    run(11, "/home/user/build/thermopix");
    run(12, "/usr/bin/thermopix (deleted)");
    run(13, "/usr/bin/python3.11");
    run(14, "/usr/bin/thermopix-windows");
    EXPECT_FALSE(strange(10));
    EXPECT_FALSE(strange(11));
    EXPECT_FALSE(strange(12)) << "an older version, whose file an update has replaced";
    EXPECT_TRUE(strange(13));
    EXPECT_TRUE(strange(14));
}

TEST_F(IsStrangerTest, TakesAProcessThatIsGoneForOne) {
    EXPECT_TRUE(strange(10));
}

TEST_F(IsStrangerTest, DoesNotGuess) {
    std::filesystem::create_directories(processes.path("10"));
    EXPECT_FALSE(strange(10));
}

}  // namespace
}  // namespace thermopix
