// Both reports, whole, on every captured sysfs tree. Each sensor read costs 0.25 ms here.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "diagnostics/AcceptanceSelfTest.h"
#include "diagnostics/ReportPlatform.h"
#include "diagnostics/SensorDump.h"
#include "fakes/Golden.h"
#include "fakes/RecordingOutput.h"
#include "fakes/TestFiles.h"
#include "platform/linux/machine/LinuxSystemInformation.h"
#include "platform/linux/sensors/SysfsHIDSymbols.h"
#include "platform/linux/sensors/SysfsThermalState.h"

namespace thermopix {
namespace {

const std::filesystem::path machinesRoot = testFile("fixtures/sysfs");

std::vector<std::string> machineNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(machinesRoot)) {
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// What the captured machine says of itself, with a bundle that is the same wherever the test runs.
FakeSystemInformation capturedInformation(const std::filesystem::path& root) {
    const LinuxSystemInformation machine(root);
    FakeSystemInformation information;
    information.machineModel = machine.model();
    information.machineProcessor = machine.processor();
    information.isVirtual = machine.isVirtualMachine();
    information.version = machine.operatingSystemVersion();
    return information;
}

class FixtureMachines : public testing::TestWithParam<std::string> {
protected:
    std::filesystem::path root = machinesRoot / GetParam();
    SysfsHIDSymbols sensors{root};
    FakeSystemInformation information = capturedInformation(root);
    SysfsThermalState state{root};
    ReportPlatform platform{sensors, information, state};
    RecordingOutput output;
};

TEST_P(FixtureMachines, HaveThisSensorReport) {
    const auto status = SensorDump::run(platform, output);
    EXPECT_EQ(status == 0, output.text().find("No thermal sensor could be read.") == std::string::npos);
    expectGolden("diagnostics/golden/" + GetParam() + ".sensors.txt", output.text());
}

TEST_P(FixtureMachines, HaveThisSelfTestReport) {
    const auto status = AcceptanceSelfTest::run(platform, output);
    EXPECT_EQ(output.lines.back() == "PASSED", status == 0);
    expectGolden("diagnostics/golden/" + GetParam() + ".selftest.txt", output.text());
}

std::string caseName(const testing::TestParamInfo<std::string>& info) {
    std::string name = info.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Reports, FixtureMachines, testing::ValuesIn(machineNames()), caseName);

}  // namespace
}  // namespace thermopix
