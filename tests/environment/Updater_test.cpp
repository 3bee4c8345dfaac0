#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "environment/FakeUpdater.h"
#include "fakes/RecordingLog.h"
#include "system/UnavailableUpdater.h"

namespace thermopix {
namespace {

void expectUpdaterContract(UpdaterManaging& updater) {
    for (const bool checks : {true, true, false, true}) {
        updater.setAutomaticallyChecksForUpdates(checks);
        EXPECT_EQ(updater.automaticallyChecksForUpdates(), checks);
        updater.checkForUpdates();
        EXPECT_EQ(updater.automaticallyChecksForUpdates(), checks);
    }
}

TEST(FakeUpdater, StartsWithoutChecksAndCountsThem) {
    FakeUpdater updater;
    EXPECT_FALSE(updater.automaticallyChecksForUpdates());
    EXPECT_EQ(updater.checkForUpdatesCallCount, 0);
    updater.checkForUpdates();
    updater.checkForUpdates();
    updater.checkForUpdates();
    EXPECT_EQ(updater.checkForUpdatesCallCount, 3);
}

TEST(FakeUpdater, KeepsTheContract) {
    FakeUpdater updater;
    expectUpdaterContract(updater);
}

TEST(UnavailableUpdater, AnswersEachCheckWithOneLineInTheLog) {
    RecordingLog log;
    UnavailableUpdater updater(log);
    updater.setAutomaticallyChecksForUpdates(true);
    EXPECT_EQ(log.lines, std::vector<std::string>{});
    updater.checkForUpdates();
    EXPECT_EQ(log.lines, std::vector<std::string>{"update: this build does not update itself; new versions come from "
                                                  "where it was installed from"});
    updater.checkForUpdates();
    EXPECT_EQ(log.lines.size(), 2U);
}

TEST(UnavailableUpdater, KeepsTheContract) {
    RecordingLog log;
    UnavailableUpdater updater(log);
    expectUpdaterContract(updater);
}

}  // namespace
}  // namespace thermopix
