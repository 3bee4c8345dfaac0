#include "menubar/AboutPanel.h"

#include <gtest/gtest.h>

#include "fakes/FakeSystem.h"

namespace thermopix {
namespace {

TEST(AboutPanel, SaysNameVersionAndTwoLinesOfCredits) {
    const FakeSystemInformation system;
    AboutPanelContent expected;
    expected.applicationName = "Thermopix";
    expected.version = "1.2 (34)";
    expected.credits =
        "Your Mac's temperature, in pixels.\n"
        "Reads the thermal sensors directly — no permissions, no network, no telemetry.";
    EXPECT_EQ(aboutPanelContent(system), expected);
}

TEST(AboutPanel, SetsTheCreditsSmallSecondaryAndCentred) {
    const auto style = aboutPanelContent(FakeSystemInformation()).creditsStyle;
    EXPECT_EQ(style.fontSize, 11.0);
    EXPECT_TRUE(style.isSecondary);
    EXPECT_TRUE(style.isCentered);
    EXPECT_EQ(style.extraLineSpacing, 2.0);
}

TEST(AboutPanel, PutsAnEmDashForEachMissingPartOfTheVersion) {
    FakeSystemInformation system;
    system.bundleBuild.reset();
    EXPECT_EQ(aboutPanelContent(system).version, "1.2 (—)");
    system.bundleVersion.reset();
    EXPECT_EQ(aboutPanelContent(system).version, "— (—)");
}

}  // namespace
}  // namespace thermopix
