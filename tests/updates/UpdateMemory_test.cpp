#include "updates/UpdateMemory.h"

#include <gtest/gtest.h>

#include "fakes/MemoryUserDefaults.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;

constexpr UpdateMemory::Time someDay{1795000000s};

TEST(UpdateMemory, whatIsRememberedOutlivesTheProcess) {
    const auto defaults = std::make_shared<MemoryUserDefaults>();
    {
        UpdateMemory memory(defaults);
        EXPECT_EQ(memory.lastCheck(), std::nullopt);
        EXPECT_EQ(memory.announcedVersion(), "");
        memory.setLastCheck(someDay);
        memory.setAnnouncedVersion("1.2");
    }
    EXPECT_EQ(defaults->values.at("updates.lastCheck"), "1795000000");
    EXPECT_EQ(defaults->values.at("updates.announcedVersion"), "1.2");
    const UpdateMemory memory(defaults);
    EXPECT_EQ(memory.lastCheck(), someDay);
    EXPECT_EQ(memory.announcedVersion(), "1.2");
}

TEST(UpdateMemory, whatCannotBeStoredIsRememberedUntilTheEnd) {
    const auto defaults = std::make_shared<MemoryUserDefaults>();
    defaults->failsWrites = true;
    UpdateMemory memory(defaults);
    memory.setLastCheck(someDay);
    memory.setAnnouncedVersion("1.2");
    EXPECT_EQ(memory.lastCheck(), someDay);
    EXPECT_EQ(memory.announcedVersion(), "1.2");
}

TEST(UpdateMemory, aTimeThatCannotBeReadIsNone) {
    const auto defaults = std::make_shared<MemoryUserDefaults>();
    for (const auto* text :
         {"", "yesterday", "-1", "1795000000 ", "1795000000.5", "253402300800", "99999999999999999999", "0x10"}) {
        defaults->setData("updates.lastCheck", text);
        EXPECT_EQ(UpdateMemory(defaults).lastCheck(), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace thermopix
