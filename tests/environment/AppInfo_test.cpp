#include "environment/AppInfo.h"

#include <gtest/gtest.h>

#include "fakes/FakeSystem.h"

namespace thermopix {
namespace {

TEST(AppInfo, TakesVersionAndBuildFromTheBundle) {
    const FakeSystemInformation system;
    EXPECT_EQ(AppInfo::name, "Thermopix");
    EXPECT_EQ(AppInfo::shortVersion(system), "1.2");
    EXPECT_EQ(AppInfo::build(system), "34");
}

TEST(AppInfo, IsAnEmDashWhereTheBundleSaysNothing) {
    FakeSystemInformation system;
    system.bundleVersion.reset();
    system.bundleBuild.reset();
    EXPECT_EQ(AppInfo::shortVersion(system), "\u2014");
    EXPECT_EQ(AppInfo::build(system), "\u2014");
}

TEST(AppInfo, KeepsAnEmptyTextEmpty) {
    FakeSystemInformation system;
    system.bundleBuild = "";
    EXPECT_EQ(AppInfo::build(system), "");
}

}  // namespace
}  // namespace thermopix
