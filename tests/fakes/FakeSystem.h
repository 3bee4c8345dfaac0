#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "system/MonotonicClock.h"
#include "system/SystemInformation.h"
#include "system/ThermalStateReader.h"

namespace thermopix {

class FakeSystemInformation final : public SystemInformation {
public:
    [[nodiscard]] std::optional<std::string> bytes(std::string_view name) const override {
        const auto entry = texts.find(name);
        return entry == texts.end() ? std::nullopt : std::optional(entry->second);
    }
    [[nodiscard]] std::optional<std::int32_t> integer(std::string_view name) const override {
        const auto entry = integers.find(name);
        return entry == integers.end() ? std::nullopt : std::optional(entry->second);
    }
    [[nodiscard]] std::string operatingSystemVersion() const override { return version; }
    [[nodiscard]] std::string bundlePath() const override { return path; }
    [[nodiscard]] std::optional<std::string> bundleInformation(std::string_view key) const override {
        const auto entry = bundle.find(key);
        return entry == bundle.end() ? std::nullopt : std::optional(entry->second);
    }

    std::map<std::string, std::string, std::less<>> texts{{"hw.model", "Model One"},
                                                          {"machdep.cpu.brand_string", "Processor Nine"}};
    std::map<std::string, std::int32_t, std::less<>> integers;
    std::map<std::string, std::string, std::less<>> bundle{{"CFBundleShortVersionString", "1.2"},
                                                           {"CFBundleVersion", "34"}};
    std::string version = "Version 12 (Bookworm)";
    std::string path = "/opt/thermopix";
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
