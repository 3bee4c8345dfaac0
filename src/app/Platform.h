#pragma once

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>

#include "app/LoginItemManaging.h"
#include "app/UpdaterManaging.h"
#include "platform/DiagnosticLog.h"
#include "platform/MainLoop.h"
#include "platform/MonotonicClock.h"
#include "platform/SensorCapture.h"
#include "platform/SleepNotifications.h"
#include "platform/StandardOutput.h"
#include "platform/SystemInformation.h"
#include "platform/ThermalStateReader.h"
#include "platform/UserDefaults.h"
#include "sensing/HIDSymbols.h"

namespace thermopix {

/// The process's arguments, its own path first.
using Arguments = std::span<const std::string>;
using EnvironmentVariables = std::map<std::string, std::string, std::less<>>;

/// The services of one system, owned by it for the life of the process. What costs something to open is made when
/// first asked for.
class Platform {
public:
    virtual ~Platform() = default;

    [[nodiscard]] virtual DiagnosticLog& log() = 0;
    [[nodiscard]] virtual StandardOutput& standardOutput() = 0;
    [[nodiscard]] virtual StandardOutput& standardError() = 0;
    [[nodiscard]] virtual MainLoop& mainLoop() = 0;
    [[nodiscard]] virtual MonotonicClock& clock() = 0;
    [[nodiscard]] virtual SleepNotifications& sleepNotifications() = 0;
    [[nodiscard]] virtual UserDefaultsDatabases& userDefaults() = 0;
    [[nodiscard]] virtual SystemInformation& systemInformation() = 0;
    [[nodiscard]] virtual ThermalStateReader& thermalState() = 0;
    [[nodiscard]] virtual HIDSymbolLoader& hidSymbols() = 0;

    /// Null where the system's sensors cannot be captured.
    [[nodiscard]] virtual SensorCapture* sensorCapture() { return nullptr; }

    [[nodiscard]] virtual std::unique_ptr<LoginItemManaging> makeLoginItem() = 0;
    [[nodiscard]] virtual std::unique_ptr<UpdaterManaging> makeUpdater() = 0;

    /// Whether the process was loaded into a unit-test host, by other signs than its environment variables.
    [[nodiscard]] virtual bool isInsideUnitTestHost() const = 0;
};

/// Each platform defines this once.
[[nodiscard]] std::unique_ptr<Platform> makePlatform(const EnvironmentVariables& variables);

}  // namespace thermopix
