#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "environment/Log.h"
#include "environment/RepetitionLog.h"
#include "platform/linux/application/DBusSleepNotifications.h"
#include "platform/linux/application/JournalLog.h"
#include "platform/linux/application/KernelEvents.h"
#include "platform/linux/bus/BusConnection.h"
#include "platform/linux/files/FileUserDefaultsDatabases.h"
#include "platform/linux/glib/GLibMainLoop.h"
#include "platform/linux/machine/LinuxMonotonicClock.h"
#include "platform/linux/machine/LinuxSystemInformation.h"
#include "platform/linux/machine/SysfsCapture.h"
#include "platform/linux/notifications/DesktopNotification.h"
#include "platform/linux/sensors/SysfsHIDSymbols.h"
#include "platform/linux/sensors/SysfsThermalState.h"
#include "platform/posix/StandardOutputStream.h"
#include "system/Platform.h"

namespace thermopix {

/// The services of a Linux system. Main loop and buses are opened when first asked for, so that a headless run needs
/// neither.
class LinuxPlatform final : public Platform {
public:
    explicit LinuxPlatform(const EnvironmentVariables& variables);

    [[nodiscard]] DiagnosticLog& log() override { return log_; }
    [[nodiscard]] StandardOutput& standardOutput() override { return standardOutput_; }
    [[nodiscard]] StandardOutput& standardError() override { return standardError_; }
    [[nodiscard]] GLibMainLoop& mainLoop() override;
    [[nodiscard]] MonotonicClock& clock() override { return clock_; }
    [[nodiscard]] SleepNotifications& sleepNotifications() override;
    [[nodiscard]] FileUserDefaultsDatabases& userDefaults() override { return userDefaults_; }
    [[nodiscard]] SystemInformation& systemInformation() override { return systemInformation_; }
    [[nodiscard]] ThermalStateReader& thermalState() override { return thermalState_; }
    [[nodiscard]] HIDSymbolLoader& hidSymbols() override { return hidSymbols_; }
    [[nodiscard]] SensorCapture* sensorCapture() override { return &sensorCapture_; }
    [[nodiscard]] std::unique_ptr<LoginItemManaging> makeLoginItem() override;
    [[nodiscard]] std::unique_ptr<UpdaterManaging> makeUpdater() override;
    /// On Linux only the environment variables tell of a test host.
    [[nodiscard]] bool isInsideUnitTestHost() const override { return false; }

    /// Only the machine's own sleep counts from now on: for a readout that no display of this session shows. To be
    /// said before the sleep notifications are first asked for.
    void leaveDisplaysAside() { followsDisplays_ = false; }

    /// Where the settings files are.
    [[nodiscard]] const std::string& settingsFolder() const { return settingsFolder_; }

    /// The session's bus; null when there is none.
    [[nodiscard]] GDBusConnection* sessionBus();

    /// Where the services that are made later keep what they remember; else in the standard database.
    void useDefaults(std::shared_ptr<UserDefaults> defaults) { defaults_ = std::move(defaults); }

private:
    [[nodiscard]] SettingsWriter::Services writerServices();
    /// The user is told about each subject on its own.
    [[nodiscard]] DesktopNotification& notices(std::optional<DesktopNotification>& subject);

    JournalLog journal_;
    Log everyLine_{journal_};
    RepetitionLog log_{everyLine_};
    StandardOutputStream standardOutput_;
    StandardOutputStream standardError_;
    LinuxMonotonicClock clock_;
    LinuxSystemInformation systemInformation_;
    SensorPolling sensorPolling_;
    SysfsThermalState thermalState_;
    NvidiaCards nvidia_;
    SysfsHIDSymbols hidSymbols_;
    SysfsCapture sensorCapture_;
    std::string configurationFolder_;
    std::string settingsFolder_;
    FileUserDefaultsDatabases userDefaults_;
    std::shared_ptr<UserDefaults> defaults_ = userDefaults_.standard();
    std::unique_ptr<GLibMainLoop> mainLoop_;
    std::unique_ptr<KernelEvents> kernelEvents_;
    std::optional<BusConnection> sessionBus_;
    /// The updater's.
    BusConnection systemBus_;
    bool followsDisplays_ = true;
    std::optional<DesktopNotification> settingsNotice_;
    std::optional<DesktopNotification> loginNotice_;
    std::unique_ptr<DBusSleepNotifications> sleepNotifications_;
};

}  // namespace thermopix
