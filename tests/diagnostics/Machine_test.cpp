#include "diagnostics/Machine.h"

#include <gtest/gtest.h>

#include <string>

#include "fakes/FakeSystem.h"

namespace thermopix {
namespace {

using namespace std::string_literals;

TEST(MachineTest, ATextEndsAtItsFirstZeroByte) {
    FakeSystemInformation system;
    system.texts["hw.model"] = "Model One\0left over\0"s;
    EXPECT_EQ(Machine::string(system, "hw.model"), "Model One");
    EXPECT_EQ(Machine::model(system), "Model One");
}

TEST(MachineTest, ATextWithoutAZeroByteIsWhole) {
    FakeSystemInformation system;
    system.texts["machdep.cpu.brand_string"] = "Processor Nine";
    EXPECT_EQ(Machine::cpu(system), "Processor Nine");
}

TEST(MachineTest, AFailedOrEmptyAnswerIsUnknown) {
    FakeSystemInformation system;
    system.texts = {{"empty", ""}};
    EXPECT_EQ(Machine::string(system, "missing"), "unknown");
    EXPECT_EQ(Machine::string(system, "empty"), "unknown");
    EXPECT_EQ(Machine::model(system), "unknown");
    EXPECT_EQ(Machine::cpu(system), "unknown");
}

TEST(MachineTest, AnAnswerOfOneZeroByteIsAnEmptyText) {
    FakeSystemInformation system;
    system.texts["zero"] = "\0"s;
    EXPECT_EQ(Machine::string(system, "zero"), "");
}

TEST(MachineTest, InvalidBytesAreRepaired) {
    FakeSystemInformation system;
    system.texts["odd"] = "Caf\xC3\xA9 \xFF!\0"s;
    EXPECT_EQ(Machine::string(system, "odd"), "Café \uFFFD!");
}

TEST(MachineTest, AnIntegerIsAbsentWhenTheSystemHasNone) {
    FakeSystemInformation system;
    system.integers["kern.hv_vmm_present"] = 1;
    EXPECT_EQ(Machine::integer(system, "kern.hv_vmm_present"), 1);
    EXPECT_EQ(Machine::integer(system, "missing"), std::nullopt);
}

}  // namespace
}  // namespace thermopix
