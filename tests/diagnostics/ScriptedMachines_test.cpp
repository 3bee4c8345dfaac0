// Both reports, whole, on machines as they are met in the field. Each sensor read costs 0.25 ms here.

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <ostream>
#include <string>

#include "diagnostics/AcceptanceSelfTest.h"
#include "diagnostics/ReportPlatform.h"
#include "diagnostics/SensorDump.h"
#include "diagnostics/Services.h"
#include "fakes/Golden.h"
#include "fakes/RecordingOutput.h"

namespace thermopix {
namespace {

struct Machine {
    std::string name;
    std::int32_t dumpStatus;
    std::int32_t selfTestStatus;
    void (*setUp)(FakePlatform& platform);
};

std::ostream& operator<<(std::ostream& stream, const Machine& machine) {
    return stream << machine.name;
}

const Machine machines[] = {
    {"laptop", 0, 0, [](FakePlatform& platform) { platform.hid.services = laptopServices(); }},
    {"hot-laptop", 0, 0,
     [](FakePlatform& platform) {
         platform.thermal.state = 2;
         platform.hid.services = {{"pACC MTR Temp Sensor0", 99.96}, {"pACC MTR Temp Sensor1", 103.25}};
     }},
    {"one-sensor", 0, 0,
     [](FakePlatform& platform) {
         platform.hid.services = {{"CPU Package", 61.0}};
     }},
    {"one-die-sensor", 0, 0,
     [](FakePlatform& platform) {
         platform.hid.services = {{"PMU tdie1", 52.74}};
     }},
    {"battery-only", 0, 1,
     [](FakePlatform& platform) {
         platform.hid.services = {{"gas gauge battery", 31.5}};
     }},
    {"stages-and-left-overs", 0, 0,
     [](FakePlatform& platform) {
         platform.thermal.state = 1;
         platform.hid.services = {
             {"PMU tdie1", 52.74},
             {"ANE MTR Temp Sensor1", 41.0},
             {"SOC MTR Temp Sensor1", 52.06},
             {"PMGR SOC Die Temp Sensor0", 52.06},
             {"Ambient", 24.125},
             {"PMU tdev1", 24.5},
             {"gas gauge battery", 32.4},
             {"gas gauge battery", 33.1},
             {std::nullopt, 40.0},
             {"PMU tdie2", std::nullopt},
         };
     }},
    {"long-names", 0, 0,
     [](FakePlatform& platform) {
         platform.hid.services = {
             {"CPU name of 27 characters..", 50.0},
             {"CPU name of 28 characters...", 49.0},
             {"CPU name of 29 characters....", 100.0},
             {"CPU température à l’arrière", 48.0},
             {"CPU \U0001F468\u200D\U0001F469\u200D\U0001F467 e\u0301", 47.0},
             {"", 46.0},
         };
     }},
    {"no-services", 1, 1, [](FakePlatform&) {}},
    {"no-service-list", 1, 1, [](FakePlatform& platform) { platform.hid.listsServices = false; }},
    {"virtual-machine", 1, 1, [](FakePlatform& platform) { platform.system.isVirtual = true; }},
    {"out-of-band", 1, 1,
     [](FakePlatform& platform) {
         platform.thermal.state = 3;
         platform.hid.services = {{"CPU Package", 0.99},
                                  {"GPU MTR Temp Sensor1", 150.01},
                                  {"NAND CH0 temp", std::numeric_limits<double>::quiet_NaN()},
                                  {"gas gauge battery", std::nullopt}};
     }},
    {"nameless", 1, 1,
     [](FakePlatform& platform) {
         platform.hid.services = {
             {std::nullopt, 40.0}, {std::nullopt, 41.0}, {"", 42.0}, {"", 43.0}, {"CPU", 44.0, false}};
     }},
    {"symbol-missing", 1, 1,
     [](FakePlatform& platform) {
         platform.hid.services = laptopServices();
         platform.hid.missing = {"IOHIDServiceClientCopyEvent", "IOHIDEventGetFloatValue"};
     }},
    {"framework-missing", 1, 1, [](FakePlatform& platform) { platform.hid.opens = false; }},
    {"client-refused", 1, 1,
     [](FakePlatform& platform) {
         platform.hid.services = laptopServices();
         platform.hid.createsClient = false;
     }},
};

class ScriptedMachines : public testing::TestWithParam<Machine> {
protected:
    void SetUp() override { GetParam().setUp(platform.fake); }

    ReportPlatform platform;
    RecordingOutput output;
};

TEST_P(ScriptedMachines, HaveThisSensorReport) {
    EXPECT_EQ(SensorDump::run(platform, output), GetParam().dumpStatus);
    expectGolden("diagnostics/golden/scripted/" + GetParam().name + ".sensors.txt", output.text());
}

TEST_P(ScriptedMachines, HaveThisSelfTestReport) {
    EXPECT_EQ(AcceptanceSelfTest::run(platform, output), GetParam().selfTestStatus);
    expectGolden("diagnostics/golden/scripted/" + GetParam().name + ".selftest.txt", output.text());
}

std::string caseName(const testing::TestParamInfo<Machine>& info) {
    std::string name = info.param.name;
    for (auto& character : name) {
        character = character == '-' ? '_' : character;
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Reports, ScriptedMachines, testing::ValuesIn(machines), caseName);

}  // namespace
}  // namespace thermopix
