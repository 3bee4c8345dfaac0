#include "platform/linux/updates/LinuxUpdater.h"

#include <gtest/gtest.h>

#include "fakes/TemporaryFolder.h"

namespace thermopix {
namespace {

TEST(UpdateSource, IsThePackageOfTheBuildUnlessItIsAFlatpak) {
    const TemporaryFolder folder;
    const auto information = folder.path("flatpak-info").string();
    EXPECT_EQ(updateSource("thermopix", information), (UpdateSource{UpdateOrigin::package, "thermopix"}));
    EXPECT_EQ(updateSource("", information), UpdateSource());
    folder.write("flatpak-info", "");
    for (const auto* package : {"thermopix", ""}) {
        EXPECT_EQ(updateSource(package, information), (UpdateSource{UpdateOrigin::flatpak, ""}));
    }
}

TEST(UpdateSource, ABuildThatNobodyMadeAPackageOfClaimsNone) {
    EXPECT_EQ(packageOfThisBuild(), THERMOPIX_CONFIGURED_PACKAGE);
}

}  // namespace
}  // namespace thermopix
