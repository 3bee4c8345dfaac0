#include "platform/linux/updates/PackageKitService.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "FakePackageKit.h"
#include "fakes/ManualMainLoop.h"
#include "platform/linux/tray/TestBus.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Fault = FakePackageKit::Fault;
using Outcome = PackageService::Outcome;
using Texts = std::vector<std::string>;

class PackageKitServiceTest : public ::testing::Test {
protected:
    /// Asks and waits for the end.
    Outcome listUpdates() {
        ask();
        EXPECT_TRUE(runUntil([this] { return outcome.has_value(); }));
        return outcome.value_or(Outcome::failed);
    }
    void ask() {
        visited.clear();
        outcome.reset();
        question = service.listUpdates(visit(), ended());
    }
    PackageService::Visit visit() {
        return [this](const ListedPackage& package) {
            visited.push_back(std::to_string(package.info) + " " + std::string(package.identifier));
        };
    }
    PackageService::Ended ended() {
        return [this](Outcome how) {
            EXPECT_FALSE(outcome.has_value()) << "a second end";
            outcome = how;
            question.cancel();
        };
    }
    std::optional<std::chrono::seconds> age() {
        bool isTold = false;
        std::optional<std::chrono::seconds> told;
        question = service.readAge([&](std::optional<std::chrono::seconds> age) {
            isTold = true;
            told = age;
        });
        EXPECT_TRUE(runUntil([&isTold] { return isTold; }));
        return told;
    }

    ManualMainLoop loop;
    std::unique_ptr<FakePackageKit> daemon = std::make_unique<FakePackageKit>();
    PackageKitService service{TestBus::instance().session(), loop};
    Texts visited;
    std::optional<Outcome> outcome;
    Subscription question;
};

TEST_F(PackageKitServiceTest, AsksForTheInstalledPackageByNameAndForAllUpdatesAndToRefreshNothing) {
    question = service.listInstalled("thermopix", visit(), ended());
    EXPECT_TRUE(runUntil([this] { return outcome.has_value(); }));
    EXPECT_EQ(visited, Texts{"1 thermopix;1.2;amd64;installed"});
    EXPECT_EQ(listUpdates(), Outcome::complete);
    EXPECT_EQ(age(), 5h);
    const std::string hints =
        "SetHints(['interactive=false', 'cache-age=4294967295', 'supports-plural-signals=true'],)";
    EXPECT_EQ(daemon->calls, (Texts{"CreateTransaction()", hints, "Resolve(4, ['thermopix'])", "CreateTransaction()",
                                    hints, "GetUpdates(2,)", "GetTimeSinceAction(13,)"}));
}

TEST_F(PackageKitServiceTest, VisitsThousandsOfPackagesInBothFormsAndHandsOnWhatTheyAreCalled) {
    for (int i = 0; i < 3000; ++i) {
        daemon->updates.push_back({0x10005, "package" + std::to_string(i) + ";1;amd64;main"});
    }
    daemon->updates.push_back({0, std::string(100000, ';') + "\x1B<b>\n"});
    for (const bool isPlural : {false, true}) {
        daemon->isPlural = isPlural;
        EXPECT_EQ(listUpdates(), Outcome::complete);
        ASSERT_EQ(visited.size(), 3001U);
        EXPECT_EQ(visited[2999], "65541 package2999;1;amd64;main");
        EXPECT_EQ(visited[3000], "0 " + std::string(100000, ';') + "\x1B<b>\n");
    }
}

TEST_F(PackageKitServiceTest, EveryFaultHasItsEnd) {
    const struct {
        const char* method;
        Fault fault;
        Outcome outcome;
    } cases[]{{"CreateTransaction", Fault::refusesTransactions, Outcome::noService},
              {"SetHints", Fault::refusesHints, Outcome::complete},
              {"GetUpdates", Fault::refusesQuestions, Outcome::failed},
              {"GetUpdates", Fault::endsWithAnError, Outcome::failed},
              {"GetUpdates", Fault::answersForOthers, Outcome::complete},
              {"GetUpdates", Fault::strangerAnswers, Outcome::complete},
              {"GetUpdates", Fault::dies, Outcome::failed}};
    daemon->updates = {{5, "thermopix;1.3;amd64;main"}};
    for (const auto& row : cases) {
        daemon->faults = {{row.method, row.fault}};
        EXPECT_EQ(listUpdates(), row.outcome) << row.method << " " << static_cast<int>(row.fault);
        if (row.outcome == Outcome::complete) {
            EXPECT_EQ(visited, Texts{"5 thermopix;1.3;amd64;main"});
        }
    }
    daemon.reset();
    EXPECT_EQ(listUpdates(), Outcome::noService);
}

TEST_F(PackageKitServiceTest, ASilentOrSenselessServiceKeepsAQuestionOpenUntilItIsDropped) {
    for (const auto fault : {Fault::saysNothing, Fault::sendsWrongTypes}) {
        daemon->faults = {{"GetUpdates", fault}};
        const auto before = daemon->calls.size();
        ask();
        EXPECT_TRUE(runUntil([&] { return daemon->calls.size() == before + 3; }));
        settle(daemon->connection());
        question.cancel();
        daemon->faults.clear();
        EXPECT_EQ(listUpdates(), Outcome::complete);
    }
}

TEST_F(PackageKitServiceTest, AnAgeThatTheServiceDoesNotKnowIsNone) {
    daemon->age = 0xFFFFFFFF;
    EXPECT_EQ(age(), std::nullopt);
    daemon->faults = {{"GetTimeSinceAction", Fault::refusesQuestions}};
    EXPECT_EQ(age(), std::nullopt);
}

TEST_F(PackageKitServiceTest, WithoutABusThereIsNoService) {
    PackageKitService busless(nullptr, loop);
    question = busless.listInstalled("thermopix", visit(), ended());
    EXPECT_FALSE(outcome);
    loop.runPending();
    EXPECT_EQ(outcome, Outcome::noService);
}

}  // namespace
}  // namespace thermopix
