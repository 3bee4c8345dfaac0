#include "system/HIDSymbols.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "fakes/ScriptedHIDLoader.h"

namespace thermopix {
namespace {

TEST(HIDSymbols, AreResolvedFromTheFrameworkByTheirNames) {
    ScriptedHIDLoader loader;
    const auto resolution = loader.load();
    ASSERT_TRUE(resolution.resolved);
    EXPECT_EQ(resolution.failed, "");
    EXPECT_EQ(loader.openedPath, "/System/Library/Frameworks/IOKit.framework/IOKit");
    EXPECT_EQ(loader.lookedUp,
              (std::vector<std::string>{"IOHIDEventSystemClientCreate", "IOHIDEventSystemClientSetMatching",
                                        "IOHIDEventSystemClientCopyServices", "IOHIDServiceClientCopyProperty",
                                        "IOHIDServiceClientCopyEvent", "IOHIDEventGetFloatValue"}));
}

TEST(HIDSymbols, NothingIsLookedUpInAFrameworkThatDoesNotOpen) {
    ScriptedHIDLoader loader;
    loader.opens = false;
    const auto resolution = loader.load();
    EXPECT_FALSE(resolution.resolved);
    EXPECT_EQ(resolution.failed, "dlopen(IOKit.framework)");
    EXPECT_TRUE(loader.lookedUp.empty());
}

TEST(HIDSymbols, TheFirstMissingNameIsReportedAndAllAreLookedUp) {
    ScriptedHIDLoader loader;
    loader.missing = {"IOHIDEventGetFloatValue", "IOHIDServiceClientCopyEvent"};
    const auto resolution = loader.load();
    EXPECT_FALSE(resolution.resolved);
    EXPECT_EQ(resolution.failed, "IOHIDServiceClientCopyEvent");
    EXPECT_EQ(loader.lookedUp.size(), 6U);
}

TEST(HIDSymbols, EachNameCanBeTheMissingOne) {
    ScriptedHIDLoader complete;
    (void)complete.load();
    for (const auto& name : complete.lookedUp) {
        ScriptedHIDLoader loader;
        loader.missing = {name};
        EXPECT_EQ(loader.load().failed, name);
    }
}

/// Says that it bound every name and binds none.
class EmptyHandedLoader final : public NamedHIDSymbolLoader {
public:
    [[nodiscard]] bool open(std::string_view /*path*/) override { return true; }
    [[nodiscard]] bool bind(std::string_view /*name*/, HIDSymbols& /*symbols*/) override { return true; }
};

TEST(HIDSymbols, ATableWithGapsThatNobodyReportedIsNotUsed) {
    EmptyHandedLoader loader;
    const auto resolution = loader.load();
    EXPECT_FALSE(resolution.resolved);
    EXPECT_EQ(resolution.failed, "unknown symbol");
}

}  // namespace
}  // namespace thermopix
