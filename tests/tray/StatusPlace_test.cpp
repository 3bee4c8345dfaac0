#include "tray/StatusPlace.h"

#include <gtest/gtest.h>

namespace thermopix {
namespace {

TEST(StatusPlace, IsTheTrayWhereThereIsADisplayEvenBeforeATrayAppears) {
    EXPECT_EQ(statusPlace({.hasSessionBus = true, .hasDisplay = true}), TrayPlace::tray);
}

TEST(StatusPlace, IsTheTrayWhereOneIsWatchedWithoutADisplayOfOurOwn) {
    EXPECT_EQ(statusPlace({.hasSessionBus = true, .hasTrayWatcher = true}), TrayPlace::tray);
}

TEST(StatusPlace, IsTheTerminalWithNeitherDisplayNorTray) {
    EXPECT_EQ(statusPlace({}), TrayPlace::terminal);
    EXPECT_EQ(statusPlace({.hasSessionBus = true}), TrayPlace::terminal);
}

TEST(StatusPlace, IsTheTerminalOnRequestWhateverElseThereIs) {
    EXPECT_EQ(statusPlace({.choice = TrayPlace::tray,
                           .isTerminalRequested = true,
                           .hasSessionBus = true,
                           .hasDisplay = true,
                           .hasTrayWatcher = true}),
              TrayPlace::terminal);
    EXPECT_EQ(statusPlace({.choice = TrayPlace::terminal, .hasSessionBus = true, .hasDisplay = true}),
              TrayPlace::terminal);
}

TEST(StatusPlace, IsTheStripByChoiceOrWhereADisplayHasNoBus) {
    EXPECT_EQ(statusPlace({.choice = TrayPlace::strip, .hasSessionBus = true, .hasDisplay = true}), TrayPlace::strip);
    EXPECT_EQ(statusPlace({.hasDisplay = true}), TrayPlace::strip);
    EXPECT_EQ(statusPlace({.choice = TrayPlace::strip}), TrayPlace::terminal);
}

TEST(StatusPlaces, AreTheTrayAloneWhileThereIsOne) {
    EXPECT_EQ(statusPlaces({.hasTray = true, .hasDisplay = true}), (StatusPlaces{.tray = true, .strip = false}));
}

TEST(StatusPlaces, LetTheStripStandInForATrayThatIsNotThere) {
    EXPECT_EQ(statusPlaces({.hasTray = false, .hasDisplay = true}), (StatusPlaces{.tray = true, .strip = true}));
}

TEST(StatusPlaces, WaitForTheAnswerWhetherThereIsATray) {
    EXPECT_EQ(statusPlaces({.hasTray = std::nullopt, .hasDisplay = true}),
              (StatusPlaces{.tray = true, .strip = false}));
}

TEST(StatusPlaces, HaveNoStripWithoutADisplay) {
    EXPECT_EQ(statusPlaces({.hasTray = false}), (StatusPlaces{.tray = true, .strip = false}));
    EXPECT_EQ(statusPlaces({.choice = TrayPlace::strip, .hasTray = false}),
              (StatusPlaces{.tray = true, .strip = false}));
}

TEST(StatusPlaces, FollowTheUsersChoice) {
    EXPECT_EQ(statusPlaces({.choice = TrayPlace::tray, .hasTray = false, .hasDisplay = true}),
              (StatusPlaces{.tray = true, .strip = false}));
    EXPECT_EQ(statusPlaces({.choice = TrayPlace::strip, .hasTray = true, .hasDisplay = true}),
              (StatusPlaces{.tray = false, .strip = true}));
}

}  // namespace
}  // namespace thermopix
