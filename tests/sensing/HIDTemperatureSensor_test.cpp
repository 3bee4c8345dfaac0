#include "sensing/HIDTemperatureSensor.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fakes/RecordingLog.h"
#include "fakes/ScriptedHIDLoader.h"

namespace thermopix {
namespace {

using Availability = HIDTemperatureSensor::Availability;
using Lines = std::vector<std::string>;

class HIDTemperatureSensorTest : public ::testing::Test {
protected:
    void TearDown() override {
        sensor.reset();
        EXPECT_EQ(ScriptedHIDLoader::liveObjects, 0) << "every owned object is released exactly once";
    }

    HIDTemperatureSensor& start() {
        sensor = std::make_unique<HIDTemperatureSensor>(loader, log);
        return *sensor;
    }

    void publish(std::size_t count) {
        loader.services.clear();
        for (std::size_t i = 0; i < count; ++i) {
            loader.services.push_back({"sensor " + std::to_string(i), 40.0 + static_cast<double>(i)});
        }
    }

    ScriptedHIDLoader loader;
    RecordingLog log;
    std::unique_ptr<HIDTemperatureSensor> sensor;
};

TEST(HIDTemperatureSensor, SaysWhyThereIsNothingToRead) {
    using Sensor = HIDTemperatureSensor;
    struct Case {
        std::function<void(ScriptedHIDLoader&)> lack;
        Availability availability;
        std::string reason;
        /// Whether a refresh finds what is there later.
        bool isFinal;
    };
    const std::vector<Case> cases{
        {[](auto& loader) {
             loader.missing = {"IOHIDServiceClientCopyEvent", "IOHIDEventGetFloatValue"};
         },
         Sensor::SymbolsUnavailable{"IOHIDServiceClientCopyEvent"},
         "IOKit symbol IOHIDServiceClientCopyEvent did not resolve", true},
        {[](auto& loader) { loader.opens = false; }, Sensor::SymbolsUnavailable{"dlopen(IOKit.framework)"},
         "IOKit symbol dlopen(IOKit.framework) did not resolve", true},
        {[](auto& loader) { loader.createsClient = false; }, Sensor::ClientUnavailable{},
         "IOHIDEventSystemClientCreate returned null", true},
        {[](auto& loader) { loader.listsServices = false; }, Sensor::NoSensorsPublished{0},
         "no thermal HID services on this Mac", false},
        {[](auto& /*loader*/) {}, Sensor::NoSensorsPublished{0}, "no thermal HID services on this Mac", false},
        {[](auto& loader) {
             loader.services = {{std::nullopt, 40}, {"", 40}, {"a number", 40, false}, {std::nullopt, 41}};
         },
         Sensor::NoSensorsPublished{4}, "4 thermal HID services, none with a Product name", false},
    };
    for (const auto& [lack, availability, reason, isFinal] : cases) {
        ScriptedHIDLoader loader;
        RecordingLog log;
        lack(loader);
        HIDTemperatureSensor sensor(loader, log);
        EXPECT_EQ(sensor.availability(), availability) << reason;
        EXPECT_FALSE(sensor.isAvailable()) << reason;
        EXPECT_TRUE(sensor.sample().empty()) << reason;
        EXPECT_EQ(log.lines, Lines{"sensor: unavailable — " + reason});
        EXPECT_EQ(ScriptedHIDLoader::liveObjects, isFinal ? 0 : 1) << "only the client is held: " << reason;

        loader.missing.clear();
        loader.opens = loader.createsClient = loader.listsServices = true;
        loader.services = {{"late", 40}};
        sensor.refresh();
        EXPECT_EQ(sensor.isAvailable(), !isFinal) << reason;
        EXPECT_EQ(log.lines.size(), isFinal ? 1U : 2U) << reason;
    }
    EXPECT_EQ(ScriptedHIDLoader::liveObjects, 0) << "every owned object is released exactly once";
}

TEST_F(HIDTemperatureSensorTest, EqualNamesAreTwoSensors) {
    loader.services = {{"twin", 40}, {"", 41}, {"twin", 42}};
    auto& started = start();
    EXPECT_EQ(started.availability(), Availability(HIDTemperatureSensor::Ready{2}));
    EXPECT_TRUE(started.isAvailable());
    EXPECT_EQ(started.sample(), (std::vector<SensorSample>{{"twin", 40}, {"twin", 42}}));
    EXPECT_EQ(log.lines, Lines{"sensor: ready (2 sensors)"});
}

TEST_F(HIDTemperatureSensorTest, AsksForTheTemperatureServicesOfTheVendor) {
    (void)start();
    ASSERT_EQ(loader.lastMatching.size(), 2U);
    EXPECT_EQ(loader.lastMatching[0].key, "PrimaryUsagePage");
    EXPECT_EQ(loader.lastMatching[0].value, 65280);
    EXPECT_EQ(loader.lastMatching[1].key, "PrimaryUsage");
    EXPECT_EQ(loader.lastMatching[1].value, 5);
}

TEST_F(HIDTemperatureSensorTest, ReadsTheLevelOfATemperatureEvent) {
    publish(1);
    EXPECT_EQ(start().sample(), (std::vector<SensorSample>{{"sensor 0", 40}}));
    EXPECT_EQ(loader.lastEventRequest.type, 15);
    EXPECT_EQ(loader.lastEventRequest.options, 0);
    EXPECT_EQ(loader.lastEventRequest.timestamp, 0);
    EXPECT_EQ(loader.lastField, 983040);
}

TEST_F(HIDTemperatureSensorTest, DropsImplausibleReadingsOneByOne) {
    loader.services = {{"a", 0.5},
                       {"b", 1.0},
                       {"c", 150.0},
                       {"d", 150.01},
                       {"e", std::numeric_limits<double>::quiet_NaN()},
                       {"f", std::numeric_limits<double>::infinity()}};
    auto& started = start();
    EXPECT_EQ(started.sample(), (std::vector<SensorSample>{{"b", 1.0}, {"c", 150.0}}));
    EXPECT_EQ(started.availability(), Availability(HIDTemperatureSensor::Ready{6}));
}

TEST_F(HIDTemperatureSensorTest, ASensorWithoutAnEventHidesNoOther) {
    loader.services = {{"a", 40}, {"b", std::nullopt}, {"c", 42}};
    EXPECT_EQ(start().sample(), (std::vector<SensorSample>{{"a", 40}, {"c", 42}}));
}

TEST_F(HIDTemperatureSensorTest, ReadsOnlyTheSensorsThatAreWanted) {
    publish(5);
    auto& started = start();
    EXPECT_TRUE(started.sample([](std::string_view) { return false; }).empty());
    EXPECT_EQ(loader.copyEventCount, 0);

    std::vector<std::string> asked;
    const auto samples = started.sample([&](std::string_view name) {
        asked.emplace_back(name);
        return name == "sensor 3";
    });
    EXPECT_EQ(samples, (std::vector<SensorSample>{{"sensor 3", 43}}));
    EXPECT_EQ(loader.copyEventCount, 1);
    EXPECT_EQ(asked, (std::vector<std::string>{"sensor 0", "sensor 1", "sensor 2", "sensor 3", "sensor 4"}));
}

TEST_F(HIDTemperatureSensorTest, ReadsOneSensorForAMeasurement) {
    loader.services = {{"a", 40}, {"b", 151}, {"c", std::nullopt}};
    auto& started = start();
    ASSERT_EQ(started.sensors().size(), 3U);
    EXPECT_EQ(started.sensors()[0].name, "a");
    EXPECT_EQ(started.read(started.sensors()[0]), 40.0);
    EXPECT_EQ(started.read(started.sensors()[1]), std::nullopt);
    EXPECT_EQ(started.read(started.sensors()[2]), std::nullopt);
    EXPECT_EQ(loader.copyEventCount, 3);
}

TEST_F(HIDTemperatureSensorTest, ReleasesEveryEvent) {
    publish(3);
    auto& started = start();
    const auto held = ScriptedHIDLoader::liveObjects;
    EXPECT_EQ(held, 4) << "the client and three services";
    (void)started.sample();
    EXPECT_EQ(ScriptedHIDLoader::liveObjects, held);
}

TEST_F(HIDTemperatureSensorTest, ARefreshThatFindsTheSameLogsNothing) {
    publish(12);
    auto& started = start();
    started.refresh();
    EXPECT_EQ(log.lines, Lines{"sensor: ready (12 sensors)"});
    EXPECT_EQ(ScriptedHIDLoader::liveObjects, 13) << "the services found before are released";
}

TEST_F(HIDTemperatureSensorTest, ARefreshThatFindsOthersLogsTheChange) {
    publish(12);
    auto& started = start();
    loader.services.pop_back();
    started.refresh();
    EXPECT_EQ(started.availability(), Availability(HIDTemperatureSensor::Ready{11}));
    EXPECT_EQ(log.lines,
              (Lines{"sensor: ready (12 sensors)", "sensor: re-resolved: ready (12 sensors) → ready (11 sensors)"}));
    EXPECT_EQ(ScriptedHIDLoader::liveObjects, 12);
}

TEST_F(HIDTemperatureSensorTest, SensorsMayVanishAndComeBack) {
    publish(2);
    auto& started = start();
    loader.listsServices = false;
    started.refresh();
    EXPECT_FALSE(started.isAvailable());
    EXPECT_TRUE(started.sensors().empty());
    EXPECT_TRUE(started.sample().empty());
    EXPECT_EQ(ScriptedHIDLoader::liveObjects, 1) << "only the client is held";

    loader.listsServices = true;
    started.refresh();
    EXPECT_TRUE(started.isAvailable());
    EXPECT_EQ(started.sample().size(), 2U);
    EXPECT_EQ(log.lines,
              (Lines{"sensor: ready (2 sensors)",
                     "sensor: re-resolved: ready (2 sensors) → unavailable — no thermal HID services on this Mac",
                     "sensor: re-resolved: unavailable — no thermal HID services on this Mac → ready (2 sensors)"}));
}

TEST_F(HIDTemperatureSensorTest, ChangedReadingsAreSeenWithoutARefresh) {
    publish(1);
    auto& started = start();
    (void)started.sample();
    loader.services.front().celsius = 77;
    EXPECT_EQ(started.sample(), (std::vector<SensorSample>{{"sensor 0", 77}}));
}

/// A system that writes down what is released, in order.
class ReleaseRecordingLoader final : public HIDSymbolLoader {
public:
    [[nodiscard]] HIDSymbolResolution load() override {
        static std::string clientName = "client";
        static std::string serviceName = "service";
        HIDSymbols symbols{
            .create = [] { return recorded(clientName); },
            .setMatching = [](void*, const std::array<HIDMatching, 2>&) {},
            .copyServices = [](void*) -> std::optional<std::vector<HIDObject>> {
                std::vector<HIDObject> services;
                services.push_back(recorded(serviceName));
                services.push_back(recorded(serviceName));
                return services;
            },
            .copyProperty = [](void*, std::string_view) { return HIDProperty(std::string("named")); },
            .copyEvent = [](void*, std::int64_t, std::int32_t, std::int64_t) { return noHIDObject(); },
            .getFloat = [](void*, std::int32_t) { return 0.0; },
        };
        return {std::move(symbols), {}};
    }

    static inline std::vector<std::string> released;

private:
    static HIDObject recorded(std::string& name) {
        return {&name, [](void* object) { released.push_back(*static_cast<std::string*>(object)); }};
    }
};

TEST(HIDTemperatureSensor, ReleasesItsServicesBeforeTheirClient) {
    ReleaseRecordingLoader::released.clear();
    ReleaseRecordingLoader loader;
    RecordingLog log;
    {
        const HIDTemperatureSensor sensor(loader, log);
        EXPECT_TRUE(ReleaseRecordingLoader::released.empty());
    }
    EXPECT_EQ(ReleaseRecordingLoader::released, (std::vector<std::string>{"service", "service", "client"}));
}

TEST(HIDAvailability, IsSummarisedInOneLine) {
    EXPECT_EQ(summary(HIDTemperatureSensor::Ready{1}), "ready (1 sensors)");
    EXPECT_EQ(summary(HIDTemperatureSensor::NoSensorsPublished{1}),
              "unavailable — 1 thermal HID services, none with a Product name");
    EXPECT_EQ(summary(HIDTemperatureSensor::SymbolsUnavailable{"x"}), "unavailable — IOKit symbol x did not resolve");
}

}  // namespace
}  // namespace thermopix
