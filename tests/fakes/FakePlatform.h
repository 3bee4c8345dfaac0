#pragma once

#include <cstdint>
#include <memory>

#include "environment/FakeLoginItem.h"
#include "environment/FakeUpdater.h"
#include "fakes/FakeSystem.h"
#include "fakes/ManualMainLoop.h"
#include "fakes/ManualSleepNotifications.h"
#include "fakes/MemoryUserDefaults.h"
#include "fakes/RecordingLog.h"
#include "fakes/RecordingOutput.h"
#include "fakes/ScriptedHIDLoader.h"
#include "system/Platform.h"

namespace thermopix {

/// A whole system of fakes; counts which of the costly services were made. The login item and the updater that it
/// made last stay reachable while their owner lives.
class FakePlatform final : public Platform {
public:
    [[nodiscard]] RecordingLog& log() override { return recordingLog; }
    [[nodiscard]] RecordingOutput& standardOutput() override { return output; }
    [[nodiscard]] RecordingOutput& standardError() override { return errors; }
    [[nodiscard]] ManualMainLoop& mainLoop() override { return manualMainLoop; }
    [[nodiscard]] MonotonicClock& clock() override { return steppingClock; }
    [[nodiscard]] ManualSleepNotifications& sleepNotifications() override { return manualSleep; }
    [[nodiscard]] MemoryUserDefaultsDatabases& userDefaults() override { return databases; }
    [[nodiscard]] FakeSystemInformation& systemInformation() override { return system; }
    [[nodiscard]] FakeThermalState& thermalState() override { return thermal; }
    [[nodiscard]] ScriptedHIDLoader& hidSymbols() override { return hid; }

    [[nodiscard]] std::unique_ptr<LoginItemManaging> makeLoginItem() override {
        ++loginItemsMade;
        auto made = std::make_unique<FakeLoginItem>(loginItemStartsEnabled);
        loginItem = made.get();
        return made;
    }
    [[nodiscard]] std::unique_ptr<UpdaterManaging> makeUpdater() override {
        ++updatersMade;
        auto made = std::make_unique<FakeUpdater>();
        updater = made.get();
        return made;
    }
    [[nodiscard]] bool isInsideUnitTestHost() const override { return insideUnitTestHost; }

    RecordingLog recordingLog;
    RecordingOutput output;
    RecordingOutput errors;
    ManualMainLoop manualMainLoop;
    SteppingClock steppingClock;
    ManualSleepNotifications manualSleep;
    MemoryUserDefaultsDatabases databases;
    FakeSystemInformation system;
    FakeThermalState thermal;
    ScriptedHIDLoader hid;
    bool loginItemStartsEnabled = false;
    bool insideUnitTestHost = false;
    std::int64_t loginItemsMade = 0;
    std::int64_t updatersMade = 0;
    FakeLoginItem* loginItem = nullptr;
    FakeUpdater* updater = nullptr;
};

}  // namespace thermopix
