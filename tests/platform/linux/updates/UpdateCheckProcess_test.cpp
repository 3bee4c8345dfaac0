#include "platform/linux/updates/UpdateCheckProcess.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <memory>
#include <optional>
#include <string>

#include "fakes/ManualMainLoop.h"
#include "fakes/TemporaryFolder.h"
#include "platform/linux/tray/TestBus.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;

class UpdateCheckProcessTest : public ::testing::Test {
protected:
    /// Starts a check whose program is this script.
    void check(const std::string& commands) {
        checking = std::make_unique<UpdateCheckProcess>(
            loop, std::vector<std::string>{folder.script("check", commands).string(), "--feed", "https://example.org"},
            10s);
        running = checking->check([this](const UpdateVerdict& told) {
            ++toldCount;
            verdict = told;
        });
    }

    [[nodiscard]] UpdateVerdict verdictOf(const std::string& commands) {
        verdict.reset();
        check(commands);
        EXPECT_FALSE(verdict) << "told before the call was over";
        EXPECT_TRUE(runUntil([this] { return verdict.has_value(); }));
        return verdict.value_or(UpToDate());
    }

    void expectUnavailable(const std::string& commands) {
        const auto told = verdictOf(commands);
        const auto* failed = std::get_if<CheckFailed>(&told);
        ASSERT_NE(failed, nullptr) << commands;
        EXPECT_EQ(failed->failure, CheckFailure::unavailable) << commands;
    }

    /// Whether the process whose number the script wrote has ended and been reaped.
    [[nodiscard]] bool isGone() const {
        pid_t process = 0;
        std::ifstream(folder.path() / "pid") >> process;
        return process > 0 && kill(process, 0) != 0;
    }
    [[nodiscard]] bool hasStarted() const { return std::filesystem::exists(folder.path() / "pid"); }
    /// Commands that never end, after telling the number of their process.
    [[nodiscard]] std::string endless() const {
        return "echo $$ >'" + (folder.path() / "new").string() + "'; mv '" + (folder.path() / "new").string() + "' '" +
               (folder.path() / "pid").string() + "'; exec tail -f /dev/null";
    }

    TemporaryFolder folder;
    ManualMainLoop loop;
    std::unique_ptr<UpdateCheckProcess> checking;
    std::optional<UpdateVerdict> verdict;
    int toldCount = 0;
    Subscription running;
};

TEST_F(UpdateCheckProcessTest, tellsTheVerdictThatTheProgramPrints) {
    EXPECT_EQ(verdictOf(R"(echo '{"verdict":"upToDate"}')"), UpdateVerdict(UpToDate()));
    EXPECT_EQ(verdictOf(R"(echo '{"verdict":"failed","reason":"tooSlow","detail":"d"}')"),
              UpdateVerdict(CheckFailed{CheckFailure::tooSlow, "d"}));
    EXPECT_EQ(toldCount, 2);
    EXPECT_EQ(loop.activeTimerCount(), 0U);
}

TEST_F(UpdateCheckProcessTest, aVerdictThatComesInPiecesIsWhole) {
    EXPECT_EQ(verdictOf(R"(printf '{"verdict":'; printf '"upTo'; printf 'Date"}\n')"), UpdateVerdict(UpToDate()));
}

TEST_F(UpdateCheckProcessTest, theProgramGetsItsArguments) {
    EXPECT_EQ(verdictOf(R"(printf '{"verdict":"failed","reason":"refused","detail":"%s"}\n' "$*")"),
              UpdateVerdict(CheckFailed{CheckFailure::refused, "--feed https://example.org"}));
}

TEST_F(UpdateCheckProcessTest, anythingButOneVerdictIsAFailedCheck) {
    expectUnavailable("true");
    expectUnavailable("exit 1");
    expectUnavailable("kill -9 $$");
    expectUnavailable("echo hello");
    expectUnavailable(R"(printf '{"verdict":"upToDate"}')");
    expectUnavailable(R"(echo '{"verdict":"upToDate"}'; echo more)");
    expectUnavailable(R"(echo; echo '{"verdict":"upToDate"}')");
    expectUnavailable("printf 'a\\000b\\n'");
    expectUnavailable("yes");
    expectUnavailable("head -c 16384 /dev/zero");
}

TEST_F(UpdateCheckProcessTest, aProgramThatIsMissingIsAFailedCheckToldLater) {
    checking = std::make_unique<UpdateCheckProcess>(loop, std::vector<std::string>{folder.path() / "missing"}, 10s);
    running = checking->check([this](const UpdateVerdict& told) { verdict = told; });
    EXPECT_FALSE(verdict);
    loop.runPending();
    ASSERT_TRUE(verdict);
    EXPECT_EQ(std::get<CheckFailed>(*verdict).failure, CheckFailure::unavailable);
}

TEST_F(UpdateCheckProcessTest, aProgramThatDoesNotEndIsEnded) {
    check(endless());
    ASSERT_TRUE(runUntil([this] { return hasStarted(); }));
    loop.advance(9s);
    EXPECT_FALSE(verdict);
    loop.advance(1s);
    ASSERT_TRUE(verdict);
    EXPECT_EQ(std::get<CheckFailed>(*verdict).failure, CheckFailure::tooSlow);
    EXPECT_TRUE(runUntil([this] { return isGone(); }));
    EXPECT_EQ(toldCount, 1);
}

TEST_F(UpdateCheckProcessTest, aCheckThatIsDroppedEndsItsProgramAndIsNotHeardOf) {
    check(endless());
    ASSERT_TRUE(runUntil([this] { return hasStarted(); }));
    running.cancel();
    EXPECT_TRUE(runUntil([this] { return isGone(); }));
    loop.advance(1min);
    EXPECT_EQ(toldCount, 0);
    EXPECT_EQ(loop.activeTimerCount(), 0U);
}

TEST_F(UpdateCheckProcessTest, aCheckMayBeDroppedByWhomItTells) {
    checking = std::make_unique<UpdateCheckProcess>(
        loop, std::vector<std::string>{folder.script("check", R"(echo '{"verdict":"upToDate"}')")}, 10s);
    const auto held = std::make_shared<int>(7);
    running = checking->check([this, held](const UpdateVerdict& told) {
        running.cancel();
        EXPECT_EQ(*held, 7);
        verdict = told;
    });
    EXPECT_TRUE(runUntil([this] { return verdict.has_value(); }));
    EXPECT_EQ(held.use_count(), 1);
}

}  // namespace
}  // namespace thermopix
