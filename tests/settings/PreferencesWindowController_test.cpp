#include "settings/PreferencesWindowController.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "fakes/FakeDesktop.h"
#include "fakes/FakePlatform.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;

class PreferencesWindowControllerTest : public testing::Test {
protected:
    [[nodiscard]] FakeWindow& window() { return *windows.window; }
    void settle() { platform.manualMainLoop.runPending(); }

    FakePlatform platform;
    std::vector<std::string> arguments{"thermopix", "--uitest-fake-sensor"};
    AppEnvironment environment{arguments, {}, platform};
    std::vector<std::string> events;
    FakeWindowSystem windows{events};
    int terminations = 0;
    PreferencesWindowController controller{environment, windows, [this] { ++terminations; }};
};

TEST_F(PreferencesWindowControllerTest, DescribesAFixedWindow) {
    EXPECT_EQ(window().description, (WindowDescription{"Thermopix Settings", 720, 520, "prefs.window"}));
}

TEST_F(PreferencesWindowControllerTest, DrawsNothingBeforeTheWindowIsShown) {
    platform.manualMainLoop.advance(10s);
    EXPECT_TRUE(window().contents.empty());
    EXPECT_TRUE(platform.manualMainLoop.scheduled.empty());
}

TEST_F(PreferencesWindowControllerTest, DrawsWhenShownAndThenOnlyWhatChanged) {
    window().show();
    settle();
    const auto drawn = window().contents.size();
    EXPECT_GE(drawn, 1U);
    platform.manualMainLoop.advance(5s);
    EXPECT_EQ(window().contents.size(), drawn);
}

TEST_F(PreferencesWindowControllerTest, RestsWhileClosedOrMiniaturized) {
    window().show();
    settle();
    window().miniaturize();
    EXPECT_EQ(platform.manualMainLoop.activeTimerCount(), 0U);
    EXPECT_TRUE(controller.isShown());
    window().show();
    EXPECT_GT(platform.manualMainLoop.activeTimerCount(), 0U);
    window().close();
    EXPECT_EQ(platform.manualMainLoop.activeTimerCount(), 0U);
    EXPECT_FALSE(controller.isShown());
}

TEST_F(PreferencesWindowControllerTest, DrawsEverythingAnewWhenShownAgain) {
    window().show();
    settle();
    window().close();
    const auto drawn = window().contents.size();
    window().show();
    EXPECT_GT(window().contents.size(), drawn);
}

TEST_F(PreferencesWindowControllerTest, ShowsWhatCameOfAnActionAlsoWhenNothingDid) {
    window().show();
    settle();
    auto& loginItem = dynamic_cast<FakeLoginItem&>(environment.loginItem());
    loginItem.failNextWrite = true;
    const auto drawn = window().contents.size();
    window().operate("prefs.openAtLogin", "true");
    EXPECT_GT(window().contents.size(), drawn);
}

TEST_F(PreferencesWindowControllerTest, PassesTheUsersActionsOn) {
    window().show();
    window().operate("prefs.style.micro");
    EXPECT_EQ(environment.preferences().style, PixelStyle::micro);
    window().operate("prefs.quit");
    EXPECT_EQ(terminations, 1);
}

}  // namespace
}  // namespace thermopix
