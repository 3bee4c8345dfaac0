#include "app/AppDelegate.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "fakes/FakeDesktop.h"
#include "fakes/FakePlatform.h"

namespace thermopix {
namespace {

using Events = std::vector<std::string>;

class AppDelegateTest : public testing::Test {
protected:
    AppDelegate& launch(std::vector<std::string> options = {}, EnvironmentVariables variables = {}) {
        arguments.assign(1, "/usr/bin/thermopix");
        arguments.insert(arguments.end(), options.begin(), options.end());
        delegate = std::make_unique<AppDelegate>(arguments, variables, platform, desktop);
        delegate->applicationDidFinishLaunching();
        return *delegate;
    }

    void settle() { platform.manualMainLoop.runPending(); }

    void storeBeforeLaunch(const Preferences& preferences) {
        PreferencesStore(platform.databases.standardDefaults).setPreferences(preferences);
    }

    FakePlatform platform;
    FakeDesktop desktop;
    std::vector<std::string> arguments;
    std::unique_ptr<AppDelegate> delegate;
};

TEST_F(AppDelegateTest, StartsInAFixedOrder) {
    launch();
    EXPECT_EQ(desktop.events, (Events{"look for other instance", "main menu"}));
    EXPECT_EQ(desktop.recordingStatusBar.itemsMade, 1);
    EXPECT_EQ(desktop.recordingApplication.policy, ActivationPolicy::accessory);
}

TEST_F(AppDelegateTest, InstallsTheThreeMenusOfTheMenuBar) {
    launch();
    const auto& items = desktop.recordingApplication.mainMenu.items;
    ASSERT_EQ(items.size(), 3U);
    EXPECT_EQ(items[0].submenu.items.front().title, "About Thermopix");
    EXPECT_EQ(items[1].submenu.title, "Edit");
    EXPECT_EQ(items[2].submenu.title, "Window");
}

TEST_F(AppDelegateTest, DoesNothingUnderAUnitTestHost) {
    launch({}, {{"XCTestConfigurationFilePath", ""}});
    settle();
    EXPECT_EQ(desktop.events, Events{});
    EXPECT_EQ(desktop.recordingStatusBar.itemsMade, 0);
}

TEST_F(AppDelegateTest, BringsTheFirstInstanceForwardAndEndsWithoutAStatusItem) {
    desktop.recordingApplication.otherInstanceRuns = true;
    launch();
    settle();
    EXPECT_EQ(desktop.events, (Events{"look for other instance", "activate other instance", "terminate"}));
    EXPECT_EQ(desktop.recordingStatusBar.itemsMade, 0);
}

TEST_F(AppDelegateTest, StartsBesideAnInstanceThatTurnsOutToBeNone) {
    desktop.recordingApplication.otherInstanceRuns = true;
    desktop.recordingApplication.otherInstanceIsOurs = false;
    launch();
    EXPECT_EQ(desktop.events, (Events{"look for other instance", "activate other instance", "main menu"}));
    EXPECT_EQ(desktop.recordingStatusBar.itemsMade, 1);
}

TEST_F(AppDelegateTest, RunsBesideANormalInstanceInInterfaceTests) {
    desktop.recordingApplication.otherInstanceRuns = true;
    launch({"--uitest-fake-sensor"});
    EXPECT_EQ(desktop.events, (Events{"main menu"}));
    EXPECT_EQ(desktop.recordingStatusBar.itemsMade, 1);
}

TEST_F(AppDelegateTest, OpensSettingsAtLaunchForInterfaceTestsWithoutLookingForOtherInstances) {
    desktop.recordingApplication.otherInstanceRuns = true;
    launch({"--uitest-show-preferences"});
    EXPECT_EQ(desktop.events, (Events{"main menu", "show window", "policy regular", "activate", "order front"}));
}

TEST_F(AppDelegateTest, OpensSettingsAtLaunchWhenTheSettingsSaySo) {
    storeBeforeLaunch({.showPreferencesOnLaunch = true});
    launch();
    EXPECT_EQ(desktop.events, (Events{"look for other instance", "main menu", "show window", "policy regular",
                                      "activate", "order front"}));
}

TEST_F(AppDelegateTest, CopiesTheLoginItemsStateIntoTheSettings) {
    platform.loginItemStartsEnabled = true;
    launch();
    EXPECT_TRUE(delegate->environment().preferences().openAtLogin);
}

TEST_F(AppDelegateTest, KeepsTheUpdaterInStepWithTheSettings) {
    storeBeforeLaunch({.checkForUpdatesAutomatically = false});
    launch();
    EXPECT_FALSE(platform.updater->automaticallyChecks);
    delegate->environment().store().set(&Preferences::checkForUpdatesAutomatically, true);
    EXPECT_TRUE(platform.updater->automaticallyChecks);
}

TEST_F(AppDelegateTest, DescribesTheSettingsWindow) {
    launch().showPreferences();
    EXPECT_EQ(desktop.windowSystem.window->description,
              (WindowDescription{"Thermopix Settings", 720, 520, "prefs.window"}));
}

TEST_F(AppDelegateTest, HasADockIconWhileSettingsIsOpen) {
    launch().showPreferences();
    EXPECT_EQ(desktop.recordingApplication.policy, ActivationPolicy::regular);
    desktop.windowSystem.window->close();
    settle();
    EXPECT_EQ(desktop.recordingApplication.policy, ActivationPolicy::accessory);
}

TEST_F(AppDelegateTest, KeepsTheDockIconWhileSettingsIsMiniaturized) {
    auto& store = launch().environment().store();
    delegate->showPreferences();
    desktop.windowSystem.window->miniaturize();
    store.set(&Preferences::showInDock, true);
    store.set(&Preferences::showInDock, false);
    settle();
    EXPECT_EQ(desktop.recordingApplication.policy, ActivationPolicy::regular);
}

TEST_F(AppDelegateTest, KeepsTheDockIconAfterSettingsClosesWhenTheSettingsSaySo) {
    storeBeforeLaunch({.showInDock = true});
    launch();
    EXPECT_EQ(desktop.recordingApplication.policy, ActivationPolicy::regular);
    delegate->showPreferences();
    desktop.windowSystem.window->close();
    settle();
    EXPECT_EQ(desktop.recordingApplication.policy, ActivationPolicy::regular);
}

TEST_F(AppDelegateTest, DoesNotDropTheDockIconWhileSettingsIsOpen) {
    storeBeforeLaunch({.showInDock = true});
    launch().showPreferences();
    delegate->environment().store().set(&Preferences::showInDock, false);
    settle();
    EXPECT_EQ(desktop.recordingApplication.policy, ActivationPolicy::regular);
    desktop.windowSystem.window->close();
    settle();
    EXPECT_EQ(desktop.recordingApplication.policy, ActivationPolicy::accessory);
}

TEST_F(AppDelegateTest, AppliesTheDockRuleOnlyAfterTheChangeHasSettled) {
    launch();
    delegate->environment().store().set(&Preferences::showInDock, true);
    EXPECT_EQ(desktop.recordingApplication.policy, ActivationPolicy::accessory);
    settle();
    EXPECT_EQ(desktop.recordingApplication.policy, ActivationPolicy::regular);
}

TEST_F(AppDelegateTest, SetsThePolicyOnlyWhenItDiffers) {
    launch();
    settle();
    desktop.events.clear();
    delegate->environment().store().set(&Preferences::showInDock, true);
    settle();
    delegate->showPreferences();
    EXPECT_EQ(desktop.events, (Events{"policy regular", "show window", "activate", "order front"}));
}

TEST_F(AppDelegateTest, ShowsTheSameWindowAgain) {
    launch().showPreferences();
    desktop.windowSystem.window->close();
    settle();
    delegate->showPreferences();
    EXPECT_EQ(desktop.windowSystem.windowsMade, 1);
    EXPECT_EQ(desktop.windowSystem.window->closeObserverCount(), 1U);
    EXPECT_TRUE(desktop.windowSystem.window->visible);
}

TEST_F(AppDelegateTest, OpensSettingsWhenReopenedWithoutVisibleWindows) {
    launch();
    EXPECT_TRUE(delegate->applicationShouldHandleReopen(false));
    EXPECT_EQ(desktop.windowSystem.windowsMade, 1);
}

TEST_F(AppDelegateTest, LeavesReopeningToTheSystemWhenAWindowIsVisible) {
    launch();
    EXPECT_TRUE(delegate->applicationShouldHandleReopen(true));
    EXPECT_EQ(desktop.windowSystem.windowsMade, 0);
}

TEST_F(AppDelegateTest, ShowsTheAboutPanelInFront) {
    launch();
    desktop.events.clear();
    delegate->showAboutPanel();
    EXPECT_EQ(desktop.events, (Events{"activate", "about panel"}));
    EXPECT_EQ(desktop.recordingApplication.aboutPanel.version, "1.2 (34)");
}

TEST_F(AppDelegateTest, MayEndBeforeItsPostedWorkRuns) {
    launch();
    delegate->environment().store().set(&Preferences::showInDock, true);
    delegate.reset();
    settle();
    EXPECT_EQ(desktop.recordingApplication.policy, ActivationPolicy::accessory);
}

}  // namespace
}  // namespace thermopix
