#include "updates/UpdateCheck.h"

#include <gtest/gtest.h>

#include "ScriptedPackages.h"
#include "fakes/ManualMainLoop.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Outcome = PackageService::Outcome;
using Packages = ScriptedPackages::Packages;

class UpdateCheckTest : public ::testing::Test {
protected:
    void start() {
        verdict.reset();
        check.start([this](const UpdateVerdict& concluded) {
            EXPECT_FALSE(verdict.has_value()) << "a second verdict";
            verdict = concluded;
        });
    }
    /// What is made of an installed 1.2 and of these updates.
    std::optional<UpdateVerdict> verdictOn(const Packages& updates) {
        start();
        packages.answer({{1, "thermopix;1.2;amd64;installed"}});
        packages.answer(updates);
        if (packages.isAsked) {
            packages.tellAge(std::nullopt);
        }
        return verdict;
    }

    ManualMainLoop loop;
    ScriptedPackages packages;
    UpdateCheck check{packages, loop, "thermopix"};
    std::optional<UpdateVerdict> verdict;
};

const UpdateVerdict upToDate = UpToDate{"1.2", std::nullopt};

TEST_F(UpdateCheckTest, asksWhatIsInstalledThenWhatIsNewThenHowOldThatIs) {
    start();
    EXPECT_TRUE(check.isRunning());
    packages.sayUpToDate();
    EXPECT_EQ(verdict, UpdateVerdict(UpToDate{"1.2", 5h}));
    EXPECT_EQ(packages.questions, (std::vector<std::string>{"installed thermopix", "updates", "age"}));
    EXPECT_FALSE(check.isRunning());
    EXPECT_EQ(loop.activeTimerCount(), 0U);
    EXPECT_EQ(verdictOn({{5, "thermopix;1.3;amd64;main"}}), UpdateVerdict(UpdateAvailable{"1.3", "1.2"}));
}

TEST_F(UpdateCheckTest, onlyTheLowHalfOfTheInfoIsTheKindAndOnlyWhatCanBeInstalledIsAnUpdate) {
    for (std::uint32_t kind = 0; kind < 40; ++kind) {
        const bool isUpdate = (kind >= 2 && kind <= 8) || kind == 26;
        for (const std::uint32_t severity : {0U, 1U, 0x7FFFU, 0xFFFFU}) {
            EXPECT_EQ(verdictOn({{severity << 16U | kind, "thermopix;1.3;amd64;main"}}),
                      isUpdate ? UpdateVerdict(UpdateAvailable{"1.3", "1.2"}) : upToDate)
                << kind;
        }
    }
}

TEST_F(UpdateCheckTest, onlyAnUpdateOfTheOwnPackageWithAVersionThatCanBeShownCounts) {
    for (const std::string identifier :
         {"", ";", ";;;", "thermopix", "thermopix;", "thermopix;;amd64;main", "thermopix;1.3",
          "thermopix;1.3;i386;main", "thermopix-windows;1.3;amd64;main", "Thermopix;1.3;amd64;main",
          " thermopix;1.3;amd64;main", "thermopix;1.3\n;amd64;main", "thermopix;1. 3;amd64;main",
          "thermopix;1.3\x1B[31m;amd64;main", "thermopix;1.3\xFF;amd64;main", "thermopix;1.3\u202E;amd64;main"}) {
        EXPECT_EQ(verdictOn({{5, identifier}}), upToDate) << identifier;
    }
    EXPECT_EQ(verdictOn({{5, "thermopix;" + std::string(101, '9') + ";amd64;main"}}), upToDate);
    EXPECT_EQ(verdictOn({{5, "thermopix;2:1.3~rc1+b<i>;amd64;main;more"}}),
              UpdateVerdict(UpdateAvailable{"2:1.3~rc1+b<i>", "1.2"}));
}

TEST_F(UpdateCheckTest, findsItsOwnAmongThousandsAndTakesTheFirst) {
    Packages many;
    for (int i = 0; i < 5000; ++i) {
        many.push_back({5, "package" + std::to_string(i) + ";1;amd64;main"});
    }
    many.push_back({8, "thermopix;1.3;amd64;main"});
    many.push_back({8, "thermopix;1.4;amd64;main"});
    EXPECT_EQ(verdictOn(many), UpdateVerdict(UpdateAvailable{"1.3", "1.2"}));
}

TEST_F(UpdateCheckTest, aProgramWhosePackageIsNotInstalledDidNotComeFromIt) {
    for (const Packages& installed : {Packages{}, Packages{{2, "thermopix;1.2;amd64;main"}},
                                      Packages{{1, "thermopix-windows;1.2;amd64;installed"}}}) {
        start();
        packages.answer(installed);
        EXPECT_EQ(verdict, UpdateVerdict(NotKnownHere{UpdateOrigin::elsewhere}));
    }
}

TEST_F(UpdateCheckTest, tellsASystemWithoutAServiceFromAServiceThatFails) {
    start();
    packages.answer({}, Outcome::noService);
    EXPECT_EQ(verdict, UpdateVerdict(NotKnownHere{UpdateOrigin::package}));
    start();
    packages.answer({}, Outcome::failed);
    EXPECT_EQ(verdict, UpdateVerdict(CheckFailed{"the package service cannot say what is installed"}));
    for (const auto outcome : {Outcome::failed, Outcome::noService}) {
        start();
        packages.answer({{1, "thermopix;1.2;amd64;installed"}});
        packages.answer({{5, "thermopix;1.3;amd64;main"}}, outcome);
        EXPECT_EQ(verdict, UpdateVerdict(CheckFailed{"the package service cannot say what is new"}));
    }
}

TEST_F(UpdateCheckTest, waitsAMinuteAndNoLongerWhicheverAnswerIsMissing) {
    for (int answers = 0; answers < 3; ++answers) {
        start();
        if (answers > 0) {
            packages.answer({{1, "thermopix;1.2;amd64;installed"}});
        }
        if (answers > 1) {
            packages.answer({});
        }
        loop.advance(59s);
        EXPECT_FALSE(verdict);
        loop.advance(1s);
        EXPECT_EQ(verdict, UpdateVerdict(CheckFailed{"the package service gave no answer"}));
        EXPECT_FALSE(packages.isAsked);
    }
}

TEST_F(UpdateCheckTest, isNotHeardOfOnceItIsCancelled) {
    start();
    packages.answer({{1, "thermopix;1.2;amd64;installed"}});
    check.cancel();
    EXPECT_FALSE(packages.isAsked);
    EXPECT_FALSE(check.isRunning());
    loop.advance(2min);
    EXPECT_FALSE(verdict);
}

}  // namespace
}  // namespace thermopix
