#include "platform/linux/updates/LinuxUpdater.h"

#include <gtest/gtest.h>

#include "FakePackageKit.h"
#include "fakes/ManualMainLoop.h"
#include "fakes/MemoryUserDefaults.h"
#include "fakes/RecordingLog.h"
#include "fakes/TemporaryFolder.h"
#include "platform/linux/notifications/FakeNotificationService.h"
#include "platform/linux/tray/TestBus.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;

TEST(LinuxUpdater, AsksThePackageServiceAndTellsTheUserUntilItEnds) {
    ManualMainLoop loop;
    RecordingLog log;
    FakePackageKit daemon;
    FakeNotificationService notifications({"body"});
    GDBusConnection* const bus = TestBus::instance().session();
    auto updater = std::make_unique<LinuxUpdater>(
        UpdateSource{UpdateOrigin::package, "thermopix"},
        LinuxUpdater::Services{loop, std::make_shared<MemoryUserDefaults>(), log, bus, bus});
    updater->setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(updater->automaticallyChecksForUpdates());
    updater->checkForUpdates();
    ASSERT_TRUE(runUntil([&] { return notifications.shown.size() == 1; }));
    EXPECT_EQ(notifications.shown[0].title, "You're up to date");
    updater->checkForUpdates();
    updater.reset();
    settle(notifications.connection());
    EXPECT_EQ(notifications.shown.size(), 1U);
    EXPECT_EQ(loop.activeTimerCount(), 0U);
}

TEST(UpdateSource, IsThePackageOfTheBuildUnlessItIsAFlatpak) {
    const TemporaryFolder folder;
    const auto information = folder.path("flatpak-info").string();
    EXPECT_EQ(updateSource("thermopix", information), (UpdateSource{UpdateOrigin::package, "thermopix"}));
    EXPECT_EQ(updateSource("", information), UpdateSource());
    folder.write("flatpak-info", "");
    for (const auto* package : {"thermopix", ""}) {
        EXPECT_EQ(updateSource(package, information), (UpdateSource{UpdateOrigin::flatpak, ""}));
    }
}

TEST(UpdateSource, ABuildThatNobodyMadeAPackageOfClaimsNone) {
    EXPECT_EQ(packageOfThisBuild(), THERMOPIX_CONFIGURED_PACKAGE);
}

}  // namespace
}  // namespace thermopix
