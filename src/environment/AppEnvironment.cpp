#include "environment/AppEnvironment.h"

#include <fmt/core.h>

#include <algorithm>

#include "environment/CommandLine.h"
#include "environment/FakeLoginItem.h"
#include "environment/FakeUpdater.h"
#include "sensing/FakeTemperatureSensor.h"
#include "sensing/HIDTemperatureSensor.h"

namespace thermopix {

AppEnvironment::AppEnvironment(Arguments arguments, const EnvironmentVariables& variables, Platform& platform)
    : platform_(platform),
      isUITest_(isGiven(Options::fakeSensor, arguments) || isGiven(Options::showPreferences, arguments)),
      shouldShowPreferencesOnLaunch_(isGiven(Options::showPreferences, arguments)),
      store_(std::make_unique<PreferencesStore>(defaults(arguments, platform.userDefaults()))) {
    const bool isFake = isGiven(Options::fakeSensor, arguments);
    if (isFake) {
        sensor_ = std::make_unique<FakeTemperatureSensor>(FakeTemperatureSensor::appleSiliconFixture(), true);
        loginItem_ = std::make_unique<FakeLoginItem>(false);
        pressureReader_ = [] { return ThermalPressure::nominal; };
    } else {
        followInterval();
        sensor_ = std::make_unique<HIDTemperatureSensor>(platform.hidSymbols(), platform.log());
        loginItem_ = platform.makeLoginItem();
        loginItem_->onAnswer = [this] { refreshLoginItemState(); };
        pressureReader_ = [&platform] { return thermalPressure(platform.thermalState().thermalState()); };
    }
    monitor_ = std::make_unique<TemperatureMonitor>(*sensor_, pressureReader_, platform.log());
    scheduler_ = std::make_unique<RefreshScheduler>(platform.mainLoop(), platform.sleepNotifications());
    if (isFake || isRunningUnitTests(variables, platform)) {
        updater_ = std::make_unique<FakeUpdater>();
    } else {
        updater_ = platform.makeUpdater();
    }
    updater_->setAutomaticallyChecksForUpdates(preferences().checkForUpdatesAutomatically);
}

std::optional<std::string> AppEnvironment::value(std::string_view flag, Arguments arguments) {
    const auto found = std::find(arguments.begin(), arguments.end(), flag);
    if (found == arguments.end() || std::next(found) == arguments.end()) {
        return std::nullopt;
    }
    return *std::next(found);
}

std::shared_ptr<UserDefaults> AppEnvironment::defaults(Arguments arguments, UserDefaultsDatabases& databases) {
    const auto suite = value(Options::defaultsSuite, arguments);
    return suite ? databases.suiteOrStandard(*suite) : databases.standard();
}

bool AppEnvironment::isRunningUnitTests(const EnvironmentVariables& variables, const Platform& platform) {
    return variables.contains("XCTestConfigurationFilePath") || platform.isInsideUnitTestHost();
}

Display AppEnvironment::currentDisplay() {
    lookForSensors();
    return monitor_->poll(preferences().source, preferences().unit);
}

void AppEnvironment::followInterval() {
    lookedAt_ = mainLoop().now();
    interval_ = store_->subscribeDistinct(
        [](const Preferences& preferences) { return preferences.refreshInterval; },
        [this](RefreshInterval interval) {
            polling_ = platform_.hidSymbols().poll(
                {seconds(interval), [this] { onLateReading(); }, [this] { rediscoverSensors(); }});
        });
}

void AppEnvironment::lookForSensors() {
    const auto now = mainLoop().now();
    if (!lookedAt_ || now - *lookedAt_ < betweenLooks) {
        return;
    }
    lookedAt_ = now;
    if (platform_.hidSymbols().hasChanged()) {
        rediscoverSensors();
    }
}

void AppEnvironment::rediscoverSensors() {
    if (rediscovery_.isActive()) {
        return;
    }
    rediscovery_ = mainLoop().oneShot(settlingTime, [this] {
        rediscovery_.cancel();
        platform_.log().diag("sensor", "sensors have come or gone; re-resolving sensors");
        sensor_->refresh();
    });
}

void AppEnvironment::refreshLoginItemState() {
    store_->set(&Preferences::openAtLogin, loginItem_->isEnabled());
}

bool AppEnvironment::setOpenAtLogin(bool enabled) {
    const auto error = loginItem_->setEnabled(enabled);
    if (error) {
        platform_.log().diag("login", fmt::format("setOpenAtLogin({}) failed: {}", enabled, error->description));
    }
    refreshLoginItemState();
    return !error;
}

}  // namespace thermopix
