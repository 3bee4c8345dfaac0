#include "environment/AppEnvironment.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "fakes/FakePlatform.h"
#include "sensing/FakeTemperatureSensor.h"
#include "sensing/HIDTemperatureSensor.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Words = std::vector<std::string>;

class AppEnvironmentTest : public testing::Test {
protected:
    [[nodiscard]] AppEnvironment made(const Words& arguments, const EnvironmentVariables& variables = {}) {
        return AppEnvironment(arguments, variables, platform);
    }

    void store(UserDefaults& defaults, const Preferences& preferences) {
        defaults.setData(PreferencesStore::defaultsKey, encodePreferences(preferences));
    }

    [[nodiscard]] Preferences stored() const {
        return decodePreferences(platform.databases.standardDefaults->data(PreferencesStore::defaultsKey).value_or(""))
            .value_or(Preferences{});
    }

    FakePlatform platform;
};

TEST_F(AppEnvironmentTest, UsesTheRealServicesByDefault) {
    auto environment = made({"thermopix"});
    EXPECT_FALSE(environment.isUITest());
    EXPECT_FALSE(environment.shouldShowPreferencesOnLaunch());
    EXPECT_NE(dynamic_cast<HIDTemperatureSensor*>(&environment.sensor()), nullptr);
    EXPECT_EQ(&environment.loginItem(), platform.loginItem);
    EXPECT_EQ(&environment.updater(), platform.updater);
    EXPECT_EQ(platform.loginItemsMade, 1);
    EXPECT_EQ(platform.updatersMade, 1);
    EXPECT_FALSE(platform.hid.openedPath.empty());
}

TEST_F(AppEnvironmentTest, FakeSensorReplacesSensorLoginItemAndUpdater) {
    auto environment = made({"thermopix", "--uitest-fake-sensor"});
    EXPECT_TRUE(environment.isUITest());
    EXPECT_FALSE(environment.shouldShowPreferencesOnLaunch());

    const auto* sensor = dynamic_cast<FakeTemperatureSensor*>(&environment.sensor());
    ASSERT_NE(sensor, nullptr);
    EXPECT_TRUE(sensor->isAvailable());
    EXPECT_EQ(sensor->samples, FakeTemperatureSensor::appleSiliconFixture());

    const auto* loginItem = dynamic_cast<FakeLoginItem*>(&environment.loginItem());
    ASSERT_NE(loginItem, nullptr);
    EXPECT_FALSE(loginItem->isEnabled());
    EXPECT_FALSE(loginItem->failNextWrite);
    EXPECT_NE(dynamic_cast<FakeUpdater*>(&environment.updater()), nullptr);

    EXPECT_EQ(platform.loginItemsMade, 0);
    EXPECT_EQ(platform.updatersMade, 0);
    EXPECT_TRUE(platform.hid.openedPath.empty());
}

TEST_F(AppEnvironmentTest, ShowPreferencesAloneKeepsTheRealServices) {
    auto environment = made({"thermopix", "--uitest-show-preferences"});
    EXPECT_TRUE(environment.isUITest());
    EXPECT_TRUE(environment.shouldShowPreferencesOnLaunch());
    EXPECT_NE(dynamic_cast<HIDTemperatureSensor*>(&environment.sensor()), nullptr);
    EXPECT_EQ(&environment.loginItem(), platform.loginItem);
    EXPECT_EQ(&environment.updater(), platform.updater);
}

TEST_F(AppEnvironmentTest, UnitTestsGetTheFakeUpdaterAlone) {
    constexpr auto variable = "XCTestConfigurationFilePath";
    for (const auto& variables : std::vector<EnvironmentVariables>{{{variable, ""}}, {{variable, "/tmp/x"}}, {}}) {
        platform.insideUnitTestHost = variables.empty();
        auto environment = made({"thermopix"}, variables);
        EXPECT_TRUE(AppEnvironment::isRunningUnitTests(variables, platform));
        EXPECT_NE(dynamic_cast<FakeUpdater*>(&environment.updater()), nullptr);
        EXPECT_EQ(platform.updatersMade, 0);
        EXPECT_EQ(&environment.loginItem(), platform.loginItem);
        EXPECT_FALSE(environment.isUITest());
    }
}

TEST_F(AppEnvironmentTest, OrdinaryProcessIsNoUnitTest) {
    EXPECT_FALSE(AppEnvironment::isRunningUnitTests({{"XCTestBundlePath", "x"}, {"HOME", "/home/user"}}, platform));
}

TEST_F(AppEnvironmentTest, NamedSuiteHoldsTheSettings) {
    Preferences preferences;
    preferences.pet = PixelPet::ghost;
    store(*platform.databases.suite("trial"), preferences);
    auto environment = made({"thermopix", "--uitest-defaults-suite", "trial"});
    EXPECT_EQ(environment.preferences().pet, PixelPet::ghost);
    environment.store().set(&Preferences::showInDock, true);
    EXPECT_EQ(platform.databases.standardDefaults->writeCount, 0);
    EXPECT_FALSE(environment.isUITest());
}

TEST_F(AppEnvironmentTest, WithoutASuiteThatCanBeOpenedTheStandardSettingsAreUsed) {
    Preferences preferences;
    preferences.pet = PixelPet::mac;
    store(*platform.databases.standardDefaults, preferences);
    platform.databases.unopenableSuite = "../elsewhere";
    for (const Words& arguments :
         {Words{"thermopix", "--uitest-fake-sensor", "--uitest-defaults-suite", "../elsewhere"},
          Words{"thermopix", "--uitest-fake-sensor", "--uitest-defaults-suite"}}) {
        auto environment = made(arguments);
        EXPECT_EQ(environment.preferences().pet, PixelPet::mac);
        EXPECT_TRUE(platform.databases.suites.empty());
        EXPECT_EQ(platform.recordingLog.lines, Words{});
    }
}

TEST_F(AppEnvironmentTest, WhatARunRemembersIsWhereItsSettingsAre) {
    using Defaults = std::shared_ptr<UserDefaults>;
    platform.databases.unopenableSuite = "../elsewhere";
    const Defaults standard = platform.databases.standardDefaults;
    const auto defaults = [&](const Words& arguments) {
        return AppEnvironment::defaults(arguments, platform.databases);
    };
    EXPECT_EQ(defaults({"thermopix"}), standard);
    EXPECT_EQ(defaults({"thermopix", "--uitest-defaults-suite", "../elsewhere"}), standard);
    EXPECT_EQ(defaults({"thermopix", "--uitest-defaults-suite", "trial"}), platform.databases.suite("trial"));
}

TEST_F(AppEnvironmentTest, LoginItemThatIsAnsweredLaterIsStoredThen) {
    auto environment = made({"thermopix"});
    platform.loginItem->enabled = true;
    EXPECT_FALSE(environment.preferences().openAtLogin);
    platform.loginItem->onAnswer();
    EXPECT_TRUE(environment.preferences().openAtLogin);
    EXPECT_TRUE(stored().openAtLogin);
}

TEST_F(AppEnvironmentTest, BuildingWritesNoSettingsAndStartsNoTimer) {
    auto environment = made({"thermopix"});
    EXPECT_EQ(platform.databases.standardDefaults->writeCount, 0);
    EXPECT_FALSE(environment.scheduler().isRunning());
    EXPECT_TRUE(platform.manualMainLoop.scheduled.empty());
}

TEST_F(AppEnvironmentTest, PushesTheStoredPreferenceIntoTheUpdater) {
    {
        auto environment = made({"thermopix"});
        EXPECT_TRUE(platform.updater->automaticallyChecksForUpdates());
    }
    Preferences preferences;
    preferences.checkForUpdatesAutomatically = false;
    store(*platform.databases.standardDefaults, preferences);
    auto environment = made({"thermopix"});
    EXPECT_FALSE(platform.updater->automaticallyChecksForUpdates());
    EXPECT_EQ(platform.updater->checkForUpdatesCallCount, 0);
}

TEST_F(AppEnvironmentTest, ReadsTheSystemsThermalPressureEachTime) {
    auto environment = made({"thermopix"});
    struct Case {
        int state;
        ThermalPressure pressure;
    };
    for (const auto [state, pressure] :
         {Case{0, ThermalPressure::nominal}, Case{1, ThermalPressure::fair}, Case{2, ThermalPressure::serious},
          Case{3, ThermalPressure::critical}, Case{4, ThermalPressure::nominal}, Case{-1, ThermalPressure::nominal}}) {
        platform.thermal.state = state;
        EXPECT_EQ(environment.currentPressure(), pressure) << state;
        EXPECT_EQ(environment.currentDisplay().pressure, pressure) << state;
    }
}

TEST_F(AppEnvironmentTest, FakeModeHasNominalPressureWhateverTheSystemSays) {
    platform.thermal.state = 3;
    auto environment = made({"thermopix", "--uitest-fake-sensor"});
    EXPECT_EQ(environment.currentPressure(), ThermalPressure::nominal);
    EXPECT_EQ(environment.currentDisplay().pressure, ThermalPressure::nominal);
    EXPECT_EQ(platform.thermal.readCount, 0);
}

TEST_F(AppEnvironmentTest, CurrentDisplayFollowsTheSettings) {
    auto environment = made({"thermopix", "--uitest-fake-sensor"});
    const Display celsius = environment.currentDisplay();
    EXPECT_EQ(celsius.unit, TemperatureUnit::celsius);
    ASSERT_TRUE(celsius.value);

    environment.store().set(&Preferences::unit, TemperatureUnit::fahrenheit);
    const Display fahrenheit = environment.currentDisplay();
    EXPECT_EQ(fahrenheit.unit, TemperatureUnit::fahrenheit);
    EXPECT_GT(fahrenheit.value, celsius.value);

    environment.store().set(&Preferences::source, SensorSource::battery);
    EXPECT_LT(environment.currentDisplay().value, fahrenheit.value);
}

TEST_F(AppEnvironmentTest, LoginItemStateIsCopiedIntoTheSettingsAndStored) {
    platform.loginItemStartsEnabled = true;
    auto environment = made({"thermopix"});
    EXPECT_FALSE(environment.preferences().openAtLogin);
    environment.refreshLoginItemState();
    EXPECT_TRUE(environment.preferences().openAtLogin);
    EXPECT_TRUE(stored().openAtLogin);

    platform.loginItem->enabled = false;
    environment.refreshLoginItemState();
    EXPECT_FALSE(environment.preferences().openAtLogin);
    EXPECT_FALSE(stored().openAtLogin);
}

TEST_F(AppEnvironmentTest, SuccessfulLoginItemWriteIsStored) {
    auto environment = made({"thermopix", "--uitest-fake-sensor"});
    EXPECT_TRUE(environment.setOpenAtLogin(true));
    EXPECT_TRUE(environment.loginItem().isEnabled());
    EXPECT_TRUE(stored().openAtLogin);
    EXPECT_TRUE(environment.setOpenAtLogin(false));
    EXPECT_FALSE(stored().openAtLogin);
    EXPECT_EQ(platform.recordingLog.lines, Words{});
}

TEST_F(AppEnvironmentTest, FailedLoginItemWriteIsLoggedAndSnapsBack) {
    platform.loginItemStartsEnabled = true;
    auto environment = made({"thermopix"});
    platform.recordingLog.lines.clear();

    platform.loginItem->failNextWrite = true;
    EXPECT_FALSE(environment.setOpenAtLogin(false));
    EXPECT_EQ(platform.recordingLog.lines, Words{"login: setOpenAtLogin(false) failed: file write: no permission"});
    EXPECT_TRUE(environment.preferences().openAtLogin);
    EXPECT_TRUE(stored().openAtLogin);

    platform.loginItem->enabled = false;
    platform.loginItem->failNextWrite = true;
    EXPECT_FALSE(environment.setOpenAtLogin(true));
    EXPECT_EQ(platform.recordingLog.lines.back(), "login: setOpenAtLogin(true) failed: file write: no permission");
    EXPECT_FALSE(stored().openAtLogin);
}

TEST_F(AppEnvironmentTest, TheSensorsKnowAtWhichIntervalTheyAreRead) {
    auto environment = made({"thermopix"});
    EXPECT_EQ(platform.hid.polls.interval, 2s);
    environment.store().set(&Preferences::refreshInterval, RefreshInterval::tenSeconds);
    EXPECT_EQ(platform.hid.polls.interval, 10s);
    EXPECT_EQ(platform.hid.endedPolls, 1);
    int late = 0;
    environment.onLateReading = [&late] { ++late; };
    platform.hid.polls.onLate();
    EXPECT_EQ(late, 1);
}

TEST_F(AppEnvironmentTest, SensorsThatComeOrGoWithoutAWordAreFoundByALookEveryTwentySeconds) {
    platform.hid.services = {{"CPU", 50}};
    auto environment = made({"thermopix"});
    platform.recordingLog.lines.clear();
    auto& loop = platform.manualMainLoop;
    const auto poll = [&] { static_cast<void>(environment.currentDisplay()); };
    loop.advance(20s - 1ns);
    poll();
    EXPECT_EQ(platform.hid.looks, 0);
    loop.advance(1ns);
    poll();
    poll();
    EXPECT_EQ(platform.hid.looks, 1);
    loop.advance(1s);
    EXPECT_EQ(platform.log().lines, Words{});

    platform.hid.changed = true;
    loop.advance(20s);
    poll();
    loop.advance(499ms);
    EXPECT_EQ(platform.log().lines, Words{});
    loop.advance(1ms);
    EXPECT_EQ(platform.log().lines, Words{"sensor: sensors have come or gone; re-resolving sensors"});
}

TEST_F(AppEnvironmentTest, ABurstOfChangesIsOneRediscovery) {
    auto environment = made({"thermopix"});
    platform.recordingLog.lines.clear();
    for (int i = 0; i < 9; ++i) {
        platform.hid.polls.onChange();
        platform.manualMainLoop.advance(50ms);
    }
    EXPECT_EQ(platform.log().lines, Words{});
    platform.manualMainLoop.advance(50ms);
    EXPECT_EQ(platform.log().lines.size(), 1U);
    platform.hid.polls.onChange();
    platform.manualMainLoop.advance(500ms);
    EXPECT_EQ(platform.log().lines.size(), 2U);
}

TEST_F(AppEnvironmentTest, AMadeUpSensorIsNotLookedFor) {
    auto environment = made({"thermopix", "--uitest-fake-sensor"});
    platform.manualMainLoop.advance(60s);
    static_cast<void>(environment.currentDisplay());
    EXPECT_EQ(platform.hid.looks, 0);
    EXPECT_EQ(platform.hid.polls.interval, 0s);
}

}  // namespace
}  // namespace thermopix
