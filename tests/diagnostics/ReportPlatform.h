#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "fakes/FakePlatform.h"

namespace thermopix {

/// Passes everything on to another loader and counts how often a sensor was read.
class CountingHIDLoader final : public HIDSymbolLoader {
public:
    explicit CountingHIDLoader(HIDSymbolLoader& inner) : inner_(inner) {}

    [[nodiscard]] HIDSymbolResolution load() override {
        auto resolution = inner_.load();
        if (resolution.resolved) {
            resolution.resolved->copyEvent = [this, copyEvent = std::move(resolution.resolved->copyEvent)](
                                                 void* service, std::int64_t type, std::int32_t options,
                                                 std::int64_t timestamp) {
                ++reads;
                return copyEvent(service, type, options, timestamp);
            };
        }
        return resolution;
    }

    std::int64_t reads = 0;

private:
    HIDSymbolLoader& inner_;
};

/// Each read of a sensor takes a quarter of a millisecond, and nothing else takes any time, so that a measured cost
/// tells how many sensors were read.
class ReadClock final : public MonotonicClock {
public:
    explicit ReadClock(const CountingHIDLoader& loader) : loader_(loader) {}
    [[nodiscard]] std::chrono::nanoseconds now() const override {
        return std::chrono::microseconds(250) * loader_.reads;
    }

private:
    const CountingHIDLoader& loader_;
};

/// What the reports use of a system: fakes, or the machine that is given, with the clock above.
class ReportPlatform final : public Platform {
public:
    ReportPlatform() : ReportPlatform(nullptr, nullptr, nullptr) {}
    ReportPlatform(HIDSymbolLoader& loader, SystemInformation& information, ThermalStateReader& state)
        : ReportPlatform(&loader, &information, &state) {}

    [[nodiscard]] DiagnosticLog& log() override { return fake.log(); }
    [[nodiscard]] StandardOutput& standardOutput() override { return fake.standardOutput(); }
    [[nodiscard]] StandardOutput& standardError() override { return fake.standardError(); }
    [[nodiscard]] MainLoop& mainLoop() override { return fake.mainLoop(); }
    [[nodiscard]] MonotonicClock& clock() override { return readClock; }
    [[nodiscard]] SleepNotifications& sleepNotifications() override { return fake.sleepNotifications(); }
    [[nodiscard]] UserDefaultsDatabases& userDefaults() override { return fake.userDefaults(); }
    [[nodiscard]] SystemInformation& systemInformation() override { return information_; }
    [[nodiscard]] ThermalStateReader& thermalState() override { return state_; }
    [[nodiscard]] HIDSymbolLoader& hidSymbols() override { return countingLoader; }
    [[nodiscard]] std::unique_ptr<LoginItemManaging> makeLoginItem() override { return fake.makeLoginItem(); }
    [[nodiscard]] std::unique_ptr<UpdaterManaging> makeUpdater() override { return fake.makeUpdater(); }
    [[nodiscard]] bool isInsideUnitTestHost() const override { return fake.isInsideUnitTestHost(); }

    FakePlatform fake;
    CountingHIDLoader countingLoader;
    ReadClock readClock{countingLoader};

private:
    ReportPlatform(HIDSymbolLoader* loader, SystemInformation* information, ThermalStateReader* state)
        : countingLoader(loader == nullptr ? static_cast<HIDSymbolLoader&>(fake.hid) : *loader),
          information_(information == nullptr ? static_cast<SystemInformation&>(fake.system) : *information),
          state_(state == nullptr ? static_cast<ThermalStateReader&>(fake.thermal) : *state) {}

    SystemInformation& information_;
    ThermalStateReader& state_;
};

}  // namespace thermopix
