#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/Callback.h"
#include "environment/PreferencesStore.h"
#include "sensing/Display.h"
#include "sensing/RefreshScheduler.h"
#include "sensing/TemperatureMonitor.h"
#include "sensing/TemperatureSensing.h"
#include "system/LoginItemManaging.h"
#include "system/Platform.h"
#include "system/UpdaterManaging.h"

namespace thermopix {

/// The parts that every controller shares, built once and never replaced. Main thread.
class AppEnvironment {
public:
    /// `platform` outlives the environment.
    AppEnvironment(Arguments arguments, const EnvironmentVariables& variables, Platform& platform);
    AppEnvironment(const AppEnvironment&) = delete;
    AppEnvironment& operator=(const AppEnvironment&) = delete;

    /// The argument after the first one that equals `flag`, whatever it is.
    [[nodiscard]] static std::optional<std::string> value(std::string_view flag, Arguments arguments);

    /// Where this run keeps what it remembers: the suite that the arguments name, else the standard database.
    [[nodiscard]] static std::shared_ptr<UserDefaults> defaults(Arguments arguments, UserDefaultsDatabases& databases);

    [[nodiscard]] static bool isRunningUnitTests(const EnvironmentVariables& variables, const Platform& platform);

    [[nodiscard]] PreferencesStore& store() { return *store_; }
    [[nodiscard]] const Preferences& preferences() const { return store_->preferences(); }
    [[nodiscard]] TemperatureSensing& sensor() { return *sensor_; }
    [[nodiscard]] TemperatureMonitor& monitor() { return *monitor_; }
    [[nodiscard]] RefreshScheduler& scheduler() { return *scheduler_; }
    [[nodiscard]] LoginItemManaging& loginItem() { return *loginItem_; }
    [[nodiscard]] UpdaterManaging& updater() { return *updater_; }
    [[nodiscard]] MainLoop& mainLoop() { return platform_.mainLoop(); }
    [[nodiscard]] Platform& platform() { return platform_; }
    [[nodiscard]] bool isUITest() const { return isUITest_; }
    [[nodiscard]] bool shouldShowPreferencesOnLaunch() const { return shouldShowPreferencesOnLaunch_; }

    /// A fresh reading for the current settings. Sensors that have come or gone are found within half a minute of
    /// polls.
    [[nodiscard]] Display currentDisplay();

    /// The system's thermal pressure now.
    [[nodiscard]] ThermalPressure currentPressure() { return pressureReader_(); }

    /// Copies what the system says about open-at-login into the settings.
    void refreshLoginItemState();

    /// False when the system refused; afterwards the setting says what the system says.
    bool setOpenAtLogin(bool enabled);

    /// Called when a sensor has answered that the last reading was left without.
    Callback onLateReading;

private:
    /// How often the machine is looked at for sensors that have come or gone without a word.
    static constexpr MainLoop::Duration betweenLooks = std::chrono::seconds(20);
    /// A driver announces its devices one by one.
    static constexpr MainLoop::Duration settlingTime = std::chrono::milliseconds(500);

    /// Tells the sensors how often they are read.
    void followInterval();
    void lookForSensors();
    void rediscoverSensors();

    Platform& platform_;
    bool isUITest_;
    bool shouldShowPreferencesOnLaunch_;
    std::unique_ptr<PreferencesStore> store_;
    std::unique_ptr<TemperatureSensing> sensor_;
    TemperatureMonitor::PressureReader pressureReader_;
    std::unique_ptr<TemperatureMonitor> monitor_;
    std::unique_ptr<RefreshScheduler> scheduler_;
    std::unique_ptr<LoginItemManaging> loginItem_;
    std::unique_ptr<UpdaterManaging> updater_;
    /// None where no sensors of the machine are read.
    std::optional<MainLoop::Duration> lookedAt_;
    Subscription rediscovery_;
    Subscription polling_;
    Subscription interval_;
};

}  // namespace thermopix
