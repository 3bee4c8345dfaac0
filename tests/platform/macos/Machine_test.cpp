#include "platform/macos/system/Machine.h"

#include <gtest/gtest.h>
#include <sys/sysctl.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <string>

namespace {

std::map<std::string, std::string>& systemValues() {
    static std::map<std::string, std::string> values;
    return values;
}

}  // namespace

int sysctlbyname(const char* name, void* value, std::size_t* size, void* /*newValue*/, std::size_t /*newSize*/) {
    const auto found = systemValues().find(name);
    if (found == systemValues().end()) {
        return -1;
    }
    if (value != nullptr) {
        std::memcpy(value, found->second.data(), std::min(*size, found->second.size()));
    }
    *size = found->second.size();
    return 0;
}

namespace thermopix {
namespace {

using namespace std::string_literals;

TEST(MacMachine, ATextEndsAtItsFirstZeroByteAndIsRepaired) {
    systemValues() = {{"cut", "Model One\0left over\0"s},
                      {"whole", "Processor Nine"},
                      {"odd", "Caf\xC3\xA9 \xFF!\0"s},
                      {"zero", "\0"s},
                      {"empty", ""}};
    EXPECT_EQ(Machine::string("cut"), "Model One");
    EXPECT_EQ(Machine::string("whole"), "Processor Nine");
    EXPECT_EQ(Machine::string("odd"), "Café \uFFFD!");
    EXPECT_EQ(Machine::string("zero"), "");
    EXPECT_EQ(Machine::string("empty"), "unknown");
    EXPECT_EQ(Machine::string("missing"), "unknown");
}

TEST(MacMachine, HasAModelAndAProcessor) {
    systemValues() = {{"hw.model", "Model One"}, {"machdep.cpu.brand_string", "Processor Nine"}};
    EXPECT_EQ(Machine::model(), "Model One");
    EXPECT_EQ(Machine::cpu(), "Processor Nine");
}

TEST(MacMachine, AnIntegerIsAbsentWhenTheSystemHasNone) {
    systemValues() = {{"kern.hv_vmm_present", "\1\0\0\0"s}, {"long", "\1\0\0\0\0\0\0\0"s}};
    EXPECT_EQ(Machine::integer("kern.hv_vmm_present"), 1);
    EXPECT_EQ(Machine::integer("long"), std::nullopt);
    EXPECT_EQ(Machine::integer("missing"), std::nullopt);
}

}  // namespace
}  // namespace thermopix
