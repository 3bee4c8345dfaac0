#include "platform/macos/sensors/IOKitHIDSymbols.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "fakes/RecordingLog.h"
#include "platform/macos/sensors/CoreFoundationHandle.h"
#include "platform/macos/standins/CoreFoundationStandIn.h"
#include "platform/macos/standins/HIDEventSystemStandIn.h"
#include "sensing/HIDTemperatureSensor.h"

namespace thermopix {
namespace {

using HIDEventSystemStandIn::machine;
using HIDEventSystemStandIn::NoText;
using HIDEventSystemStandIn::Service;

/// Opens the stand-in's library wherever the framework is asked for.
class StandInLoader final : public NamedHIDSymbolLoader {
public:
    bool open(std::string_view path) override {
        pathAskedFor = path;
        return symbols_.open(HID_STANDIN_LIBRARY);
    }
    bool bind(std::string_view name, HIDSymbols& symbols) override { return symbols_.bind(name, symbols); }

    std::string pathAskedFor;

private:
    IOKitHIDSymbols symbols_;
};

class IOKitHIDSymbolsTest : public testing::Test {
protected:
    ~IOKitHIDSymbolsTest() override {
        HIDEventSystemStandIn::shutDown();
        EXPECT_EQ(CoreFoundationStandIn::liveObjects(), 0) << "objects that nobody released";
        EXPECT_EQ(CoreFoundationStandIn::overReleases(), 0) << "objects that were released twice";
        CoreFoundationStandIn::forget();
    }

    using Samples = std::vector<std::pair<std::string, double>>;

    /// What a sensor reads of the machine.
    Samples read() {
        HIDTemperatureSensor sensor(loader, log);
        Samples samples;
        for (const auto& sample : static_cast<TemperatureSensing&>(sensor).sample()) {
            samples.emplace_back(sample.name, sample.celsius);
        }
        return samples;
    }

    StandInLoader loader;
    RecordingLog log;
};

TEST_F(IOKitHIDSymbolsTest, FindsAllSixFunctionsByName) {
    const auto resolution = loader.load();
    EXPECT_EQ(loader.pathAskedFor, "/System/Library/Frameworks/IOKit.framework/IOKit");
    EXPECT_TRUE(resolution.resolved.has_value()) << resolution.failed;
}

TEST_F(IOKitHIDSymbolsTest, ALibraryThatIsNotThereCannotBeOpened) {
    EXPECT_FALSE(IOKitHIDSymbols().open("/nowhere/IOKit"));
}

TEST_F(IOKitHIDSymbolsTest, ANameThatTheLibraryDoesNotHaveIsNotBound) {
    HIDSymbols symbols;
    IOKitHIDSymbols real;
    EXPECT_FALSE(real.bind("IOHIDEventGetFloatValue", symbols)) << "bound before any library was opened";
    ASSERT_TRUE(real.open(HID_STANDIN_LIBRARY));
    EXPECT_FALSE(real.bind("IOHIDEventGetIntegerValue", symbols));
    EXPECT_TRUE(real.bind("IOHIDEventGetFloatValue", symbols));
    EXPECT_TRUE(symbols.getFloat);
}

TEST_F(IOKitHIDSymbolsTest, ASensorReadsTheNamedServicesAndGivesEverythingBack) {
    machine().services = {{"PMU tdie1", 61.5}, {"PMU tdie2", 63.25}, {"NAND CH0 temp", 40.0}};
    EXPECT_EQ(read(), (Samples{{"PMU tdie1", 61.5}, {"PMU tdie2", 63.25}, {"NAND CH0 temp", 40.0}}));
}

TEST_F(IOKitHIDSymbolsTest, MatchesTemperatureServicesAndAsksForTheLevelOfATemperatureEvent) {
    machine().services = {{"gas gauge battery", 30.0}};
    EXPECT_EQ(read(), (Samples{{"gas gauge battery", 30.0}}));

    const std::vector<std::pair<std::string, int>> wanted{{"PrimaryUsagePage", 65280}, {"PrimaryUsage", 5}};
    EXPECT_EQ(machine().matching, wanted);
    EXPECT_EQ(machine().eventsAskedFor, (std::vector<std::vector<long>>{{15, 0, 0}}));
    EXPECT_EQ(machine().fieldsAskedFor, (std::vector<int>{983040}));
}

TEST_F(IOKitHIDSymbolsTest, AServiceWithoutATextForANameOrWithoutAnEventIsPassedOver) {
    machine().services = {{std::nullopt, 50.0},        {NoText{}, 51.0},   {"", 52.0}, {"PMU tdie1", 53.0},
                          {"PMU tdie2", std::nullopt}, {"PMU tdie3", 44.0}};
    EXPECT_EQ(read(), (Samples{{"PMU tdie1", 53.0}, {"PMU tdie3", 44.0}}));
}

TEST_F(IOKitHIDSymbolsTest, NamesKeepEveryCharacter) {
    const std::string name = "Température du processeur, 日本 " + std::string(300, 'x');
    machine().services = {{name, 50.0}};
    EXPECT_EQ(read(), (Samples{{name, 50.0}}));
}

TEST_F(IOKitHIDSymbolsTest, RediscoveringTenTimesLeavesNothingBehind) {
    machine().services = {{"PMU tdie1", 61.5}, {"PMU tdie2", 63.25}};
    HIDTemperatureSensor sensor(loader, log);
    const int afterFirst = CoreFoundationStandIn::liveObjects();
    for (int i = 0; i < 10; ++i) {
        sensor.refresh();
    }
    EXPECT_EQ(CoreFoundationStandIn::liveObjects(), afterFirst);
}

TEST_F(IOKitHIDSymbolsTest, WithoutAClientNothingIsAskedOfIt) {
    machine().hasClient = false;
    HIDTemperatureSensor sensor(loader, log);
    EXPECT_FALSE(sensor.isAvailable());
    EXPECT_TRUE(machine().matching.empty());
}

TEST_F(IOKitHIDSymbolsTest, WithoutAListOfServicesThereAreNoSensors) {
    machine().hasServices = false;
    HIDTemperatureSensor sensor(loader, log);
    EXPECT_EQ(summary(sensor.availability()), "unavailable — no thermal HID services on this Mac");
}

TEST_F(IOKitHIDSymbolsTest, AHandleReleasesWhatItOwnsExactlyOnce) {
    using Handle = CoreFoundationHandle<CFStringRef>;
    {
        Handle first(CoreFoundationStandIn::makeString("one"));
        Handle moved(std::move(first));
        EXPECT_EQ(CoreFoundationStandIn::text(moved.get()), "one");
        Handle assigned(CoreFoundationStandIn::makeString("two"));
        assigned = std::move(moved);
        EXPECT_EQ(CoreFoundationStandIn::text(assigned.get()), "one");
        EXPECT_FALSE(Handle());
        EXPECT_FALSE(Handle(nullptr));
    }
    EXPECT_EQ(CoreFoundationStandIn::liveObjects(), 0);
}

}  // namespace
}  // namespace thermopix
