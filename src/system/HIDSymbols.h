#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/Subscription.h"

namespace thermopix {

/// An owned object of the HID event system (client, service, event), released when dropped; null means absent.
using HIDObject = std::unique_ptr<void, void (*)(void*)>;

[[nodiscard]] inline HIDObject noHIDObject() {
    return {nullptr, [](void*) {}};
}

/// A property that is no text; its value does not matter.
struct OtherHIDProperty {};
using HIDProperty = std::variant<std::string, OtherHIDProperty>;

struct HIDMatching {
    std::string_view key;
    std::int32_t value;
};

/// The six entry points of the HID event system that temperatures are read with, each named after the framework
/// function that it is bound to; main thread. The table may be answered by anything that publishes named sensors.
struct HIDSymbols {
    std::function<HIDObject()> create;
    std::function<void(void* client, const std::array<HIDMatching, 2>& matching)> setMatching;
    std::function<std::optional<std::vector<HIDObject>>(void* client)> copyServices;
    std::function<std::optional<HIDProperty>(void* service, std::string_view key)> copyProperty;
    std::function<HIDObject(void* service, std::int64_t type, std::int32_t options, std::int64_t timestamp)> copyEvent;
    std::function<double(void* event, std::int32_t field)> getFloat;

    /// Whether the service's last event is missing only because it is still being read; empty where reads are waited
    /// for.
    std::function<bool(void* service)> isAwaited{};
};

/// The complete table, or what was missing.
struct HIDSymbolResolution {
    std::optional<HIDSymbols> resolved;
    std::string failed;
};

/// How events will be asked for, and what is told meanwhile, on the asking thread.
struct SensorPolls {
    std::chrono::nanoseconds interval{};
    /// An event has come that an earlier poll was left without.
    std::function<void()> onLate;
    /// Services have come or gone since they were listed.
    std::function<void()> onChange;
};

class HIDSymbolLoader {
public:
    virtual ~HIDSymbolLoader() = default;

    [[nodiscard]] virtual HIDSymbolResolution load() = 0;

    /// From now on events are asked for on a thread that must not wait, while the subscription lasts: what is slow is
    /// read beside it. Does nothing where every read is waited for.
    [[nodiscard]] virtual Subscription poll(const SensorPolls& /*polls*/) { return {}; }

    /// A cheap look at whether services have come or gone since they were listed.
    [[nodiscard]] virtual bool hasChanged() { return false; }
};

/// Looks up all six functions by their names in the framework; the first that does not resolve is reported.
class NamedHIDSymbolLoader : public HIDSymbolLoader {
public:
    [[nodiscard]] HIDSymbolResolution load() final;

    /// Opens the library; false when that fails. Never closed again.
    [[nodiscard]] virtual bool open(std::string_view path) = 0;

    /// Binds the function called `name` to its entry of the table; false when the name does not resolve.
    [[nodiscard]] virtual bool bind(std::string_view name, HIDSymbols& symbols) = 0;
};

}  // namespace thermopix
