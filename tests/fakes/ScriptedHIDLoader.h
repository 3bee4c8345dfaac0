#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "system/HIDSymbols.h"

namespace thermopix {

/// A stand-in HID event system: services, names and readings as a test scripts them, with every call counted and
/// every owned object accounted for.
class ScriptedHIDLoader final : public NamedHIDSymbolLoader {
public:
    struct Service {
        /// The "Product" property: none, a text, or (when `productIsText` is false) something else.
        std::optional<std::string> product;
        /// None when the service answers no event.
        std::optional<double> celsius;
        bool productIsText = true;
    };

    [[nodiscard]] bool open(std::string_view path) override {
        openedPath = path;
        return opens;
    }

    [[nodiscard]] bool bind(std::string_view name, HIDSymbols& symbols) override {
        lookedUp.emplace_back(name);
        if (missing.contains(std::string(name))) {
            return false;
        }
        if (name == "IOHIDEventSystemClientCreate") {
            symbols.create = [this] { return createsClient ? owned(&client_) : noHIDObject(); };
        } else if (name == "IOHIDEventSystemClientSetMatching") {
            symbols.setMatching = [this](void*, const std::array<HIDMatching, 2>& matching) {
                lastMatching = {matching.begin(), matching.end()};
            };
        } else if (name == "IOHIDEventSystemClientCopyServices") {
            symbols.copyServices = [this](void*) -> std::optional<std::vector<HIDObject>> {
                if (!listsServices) {
                    return std::nullopt;
                }
                std::vector<HIDObject> objects;
                for (auto& service : services) {
                    objects.push_back(owned(&service));
                }
                return objects;
            };
        } else if (name == "IOHIDServiceClientCopyProperty") {
            symbols.copyProperty = [](void* service, std::string_view key) -> std::optional<HIDProperty> {
                const auto& scripted = *static_cast<Service*>(service);
                if (key != "Product" || !scripted.product) {
                    return std::nullopt;
                }
                return scripted.productIsText ? HIDProperty(*scripted.product) : HIDProperty(OtherHIDProperty{});
            };
        } else if (name == "IOHIDServiceClientCopyEvent") {
            symbols.copyEvent = [this](void* service, std::int64_t type, std::int32_t options, std::int64_t timestamp) {
                ++copyEventCount;
                lastEventRequest = {type, options, timestamp};
                return static_cast<Service*>(service)->celsius ? owned(service) : noHIDObject();
            };
        } else if (name == "IOHIDEventGetFloatValue") {
            symbols.getFloat = [this](void* event, std::int32_t field) {
                lastField = field;
                return static_cast<Service*>(event)->celsius.value_or(std::numeric_limits<double>::quiet_NaN());
            };
        } else {
            return false;
        }
        return true;
    }

    [[nodiscard]] Subscription poll(const SensorPolls& asked) override {
        polls = asked;
        return Subscription([this] { ++endedPolls; });
    }
    [[nodiscard]] bool hasChanged() override {
        ++looks;
        return changed;
    }

    struct EventRequest {
        std::int64_t type = 0;
        std::int32_t options = -1;
        std::int64_t timestamp = -1;
    };

    /// Must not change while services of it are held; assign before discovery.
    std::vector<Service> services;
    bool opens = true;
    bool createsClient = true;
    bool listsServices = true;
    std::set<std::string> missing;

    SensorPolls polls;
    std::int64_t endedPolls = 0;
    std::int64_t looks = 0;
    /// What a look finds.
    bool changed = false;

    std::string openedPath;
    std::vector<std::string> lookedUp;
    std::vector<HIDMatching> lastMatching;
    std::int64_t copyEventCount = 0;
    EventRequest lastEventRequest;
    std::int32_t lastField = 0;
    /// Owned objects not yet released; shared by all loaders of a test process.
    static inline std::int64_t liveObjects = 0;

private:
    static HIDObject owned(void* object) {
        ++liveObjects;
        return {object, [](void*) { --liveObjects; }};
    }

    int client_ = 0;
};

}  // namespace thermopix
