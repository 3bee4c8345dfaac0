#include "menubar/StatusPlace.h"

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

}  // namespace
}  // namespace thermopix
