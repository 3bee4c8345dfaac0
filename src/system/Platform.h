#pragma once

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "system/DiagnosticLog.h"
#include "system/HIDSymbols.h"
#include "system/LoginItemManaging.h"
#include "system/MainLoop.h"
#include "system/MonotonicClock.h"
#include "system/SensorCapture.h"
#include "system/SleepNotifications.h"
#include "system/StandardOutput.h"
#include "system/SystemInformation.h"
#include "system/ThermalStateReader.h"
#include "system/UpdaterManaging.h"
#include "system/UserDefaults.h"

namespace thermopix {

/// The process's arguments, its own path first.
using Arguments = std::span<const std::string>;
using EnvironmentVariables = std::map<std::string, std::string, std::less<>>;

/// The text of a variable; empty where it is not set.
[[nodiscard]] inline std::string_view textOf(const EnvironmentVariables& variables, std::string_view name) {
    const auto found = variables.find(name);
    return found == variables.end() ? std::string_view() : std::string_view(found->second);
}

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

/// Takes the numbers of standard streams that are closed, so that nothing else gets them and writing to them fails. For
/// the first line of `main`. Each platform defines this once.
void occupyStandardStreams();

/// Each platform defines this once.
[[nodiscard]] std::unique_ptr<Platform> makePlatform(const EnvironmentVariables& variables);

}  // namespace thermopix
