#include "settings/PreferencesView.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "fakes/FakePlatform.h"
#include "sensing/FakeTemperatureSensor.h"
#include "settings/ViewOutline.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;

class PreferencesViewTest : public testing::Test {
protected:
    PreferencesViewTest() {
        view.onChange = [this] { ++redraws; };
    }

    void appear() {
        view.appear();
        settle();
    }
    void settle() { platform.manualMainLoop.runPending(); }
    void operate(const std::string& identifier, const std::string& value = "") {
        view.handle({identifier, value});
        settle();
    }
    [[nodiscard]] const Preferences& preferences() { return environment.preferences(); }
    [[nodiscard]] bool shows(const std::string& text) { return outline(view.node()).find(text) != std::string::npos; }

    FakePlatform platform;
    std::vector<std::string> arguments{"thermopix", "--uitest-fake-sensor"};
    AppEnvironment environment{arguments, {}, platform};
    int terminations = 0;
    int redraws = 0;
    PreferencesView view{environment, [this] { ++terminations; }};

    [[nodiscard]] FakeTemperatureSensor& sensor() { return dynamic_cast<FakeTemperatureSensor&>(environment.sensor()); }
    [[nodiscard]] FakeLoginItem& loginItem() { return dynamic_cast<FakeLoginItem&>(environment.loginItem()); }
};

TEST_F(PreferencesViewTest, StartsBelowATransparentTitleBar) {
    PreferencesView below(
        environment, [] {}, 28);
    const auto padding = [](const ViewNode& root, std::size_t column) {
        return (column == 0 ? root.children[0] : root.children[2].children[0]).padding.top;
    };
    EXPECT_EQ(padding(view.node(), 0), 16);
    EXPECT_EQ(padding(view.node(), 2), 28);
    EXPECT_EQ(padding(below.node(), 0), 44);
    EXPECT_EQ(padding(below.node(), 2), 40);
}

TEST_F(PreferencesViewTest, StartsWithTheReadoutPaneAndNoReading) {
    EXPECT_TRUE(shows("says \"Preview: --°\""));
}

TEST_F(PreferencesViewTest, TakesAReadingWhenItAppears) {
    appear();
    EXPECT_TRUE(shows("says \"Preview: 61°\""));
}

TEST_F(PreferencesViewTest, FollowsTheMachineOnceASecond) {
    appear();
    sensor().samples = {{"CPU", 40.0}};
    environment.monitor().reset();
    platform.manualMainLoop.advance(999ms);
    EXPECT_TRUE(shows("Preview: 61°"));
    platform.manualMainLoop.advance(1ms);
    EXPECT_TRUE(shows("Preview: 40°"));
}

TEST_F(PreferencesViewTest, RefreshesTheDisplayAtOnceWhenUnitOrSourceChange) {
    appear();
    operate("prefs.unit", "fahrenheit");
    EXPECT_TRUE(shows("Preview: 141°"));
    operate("prefs.pane.general");
    operate("prefs.source", "hottest");
    operate("prefs.pane.readout");
    operate("prefs.source", "battery");
    EXPECT_TRUE(shows("Preview:  90°"));
}

TEST_F(PreferencesViewTest, DoesNothingWhileItIsNotShown) {
    appear();
    view.disappear();
    settle();
    const auto polls = sensor().sampleCallCount;
    redraws = 0;
    platform.manualMainLoop.advance(60s);
    environment.store().set(&Preferences::unit, TemperatureUnit::fahrenheit);
    settle();
    EXPECT_EQ(sensor().sampleCallCount, polls);
    EXPECT_EQ(redraws, 0);
    EXPECT_EQ(platform.manualMainLoop.activeTimerCount(), 0U);
}

TEST_F(PreferencesViewTest, KeepsItsPaneFromOneShowingToTheNext) {
    appear();
    operate("prefs.pane.about");
    view.disappear();
    view.appear();
    EXPECT_TRUE(shows("prefs.quit"));
}

TEST_F(PreferencesViewTest, BlinksWithAPetAndWithout) {
    for (const PixelPet pet : {PixelPet::cat, PixelPet::none}) {
        environment.store().set(&Preferences::pet, pet);
        appear();
        const auto open = view.node();
        platform.manualMainLoop.advance(5500ms);
        EXPECT_NE(view.node(), open) << title(pet);
        platform.manualMainLoop.advance(160ms);
        EXPECT_EQ(view.node(), open) << title(pet);
        view.disappear();
    }
}

TEST_F(PreferencesViewTest, LetsTheSystemDecideAboutOpeningAtLogin) {
    appear();
    operate("prefs.openAtLogin", "true");
    EXPECT_TRUE(loginItem().enabled);
    EXPECT_TRUE(preferences().openAtLogin);
    loginItem().failNextWrite = true;
    operate("prefs.openAtLogin", "false");
    EXPECT_TRUE(preferences().openAtLogin);
}

TEST_F(PreferencesViewTest, IgnoresWhatMeansNothing) {
    appear();
    const Preferences before = preferences();
    for (const auto* identifier :
         {"", "prefs.pet.dragon", "prefs.size", "prefs.unitLetter", "prefs.pane.nowhere", "nonsense"}) {
        operate(identifier, "perhaps");
    }
    operate("prefs.interval", "3");
    operate("prefs.interval", "2x");
    EXPECT_EQ(preferences(), before);
    EXPECT_EQ(terminations, 0);
    EXPECT_TRUE(shows("prefs.preview"));
}

TEST_F(PreferencesViewTest, ShowsAChangeThatCameFromOutside) {
    appear();
    redraws = 0;
    environment.store().set(&Preferences::showsUnitLetter, true);
    settle();
    EXPECT_GT(redraws, 0);
    EXPECT_TRUE(shows("Preview: 61°C"));
}

}  // namespace
}  // namespace thermopix
