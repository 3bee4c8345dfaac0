#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "system/MonotonicClock.h"
#include "system/SystemInformation.h"
#include "system/ThermalStateReader.h"

namespace thermopix {

class FakeSystemInformation final : public SystemInformation {
public:
    [[nodiscard]] std::string model() const override { return machineModel; }
    [[nodiscard]] std::string processor() const override { return machineProcessor; }
    [[nodiscard]] bool isVirtualMachine() const override { return isVirtual; }
    [[nodiscard]] std::string operatingSystemVersion() const override { return version; }
    [[nodiscard]] std::string bundlePath() const override { return path; }
    [[nodiscard]] std::optional<std::string> shortVersion() const override { return bundleVersion; }
    [[nodiscard]] std::optional<std::string> build() const override { return bundleBuild; }

    std::string machineModel = "Model One";
    std::string machineProcessor = "Processor Nine";
    bool isVirtual = false;
    std::string version = "Version 12 (Bookworm)";
    std::string path = "/opt/thermopix";
    std::optional<std::string> bundleVersion = "1.2";
    std::optional<std::string> bundleBuild = "34";
};

class FakeThermalState final : public ThermalStateReader {
public:
    [[nodiscard]] int thermalState() override {
        ++readCount;
        return state;
    }

    int state = 0;
    std::int64_t readCount = 0;
};

/// A clock that moves on by a fixed step at each reading.
class SteppingClock final : public MonotonicClock {
public:
    [[nodiscard]] std::chrono::nanoseconds now() const override {
        time_ += step;
        return time_;
    }

    std::chrono::nanoseconds step{1000};

private:
    mutable std::chrono::nanoseconds time_{0};
};

}  // namespace thermopix
