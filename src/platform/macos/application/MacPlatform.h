#pragma once

#include "environment/Log.h"
#include "environment/RepetitionLog.h"
#include "platform/macos/sensors/IOKitHIDSymbols.h"
#include "platform/macos/system/MacMainLoop.h"
#include "platform/macos/system/MacMonotonicClock.h"
#include "platform/macos/system/MacSleepNotifications.h"
#include "platform/macos/system/MacSystemInformation.h"
#include "platform/macos/system/MacSystemLog.h"
#include "platform/macos/system/MacThermalState.h"
#include "platform/macos/system/MacUserDefaults.h"
#include "platform/posix/StandardOutputStream.h"
#include "system/Platform.h"

namespace thermopix {

/// The services of a Mac; none of them shows anything or needs the application object.
class MacPlatform final : public Platform {
public:
    MacPlatform();

    [[nodiscard]] DiagnosticLog& log() override { return log_; }
    [[nodiscard]] StandardOutput& standardOutput() override { return standardOutput_; }
    [[nodiscard]] StandardOutput& standardError() override { return standardError_; }
    [[nodiscard]] MainLoop& mainLoop() override { return mainLoop_; }
    [[nodiscard]] MonotonicClock& clock() override { return clock_; }
    [[nodiscard]] SleepNotifications& sleepNotifications() override { return sleepNotifications_; }
    [[nodiscard]] UserDefaultsDatabases& userDefaults() override { return userDefaults_; }
    [[nodiscard]] SystemInformation& systemInformation() override { return systemInformation_; }
    [[nodiscard]] ThermalStateReader& thermalState() override { return thermalState_; }
    [[nodiscard]] HIDSymbolLoader& hidSymbols() override { return hidSymbols_; }
    [[nodiscard]] std::unique_ptr<LoginItemManaging> makeLoginItem() override;
    /// Of the update framework where this build was made with it, else one that says that there is none.
    [[nodiscard]] std::unique_ptr<UpdaterManaging> makeUpdater() override;
    [[nodiscard]] bool isInsideUnitTestHost() const override;

private:
    MacSystemLog systemLog_;
    Log everyLine_{systemLog_};
    RepetitionLog log_{everyLine_};
    StandardOutputStream standardOutput_;
    StandardOutputStream standardError_;
    MacMainLoop mainLoop_;
    MacMonotonicClock clock_;
    MacSleepNotifications sleepNotifications_;
    MacUserDefaultsDatabases userDefaults_;
    MacSystemInformation systemInformation_;
    MacThermalState thermalState_;
    IOKitHIDSymbols hidSymbols_;
};

}  // namespace thermopix
