#include "menubar/StatusItemController.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "fakes/FakePlatform.h"
#include "fakes/RecordingStatusBar.h"
#include "pixels/PixelRasterizer.h"
#include "pixels/StatusImageRenderer.h"
#include "sensing/FakeTemperatureSensor.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Scheduled = ManualMainLoop::Scheduled;

class StatusItemControllerTest : public testing::Test {
protected:
    FakePlatform platform;
    ManualMainLoop& loop = platform.manualMainLoop;
    std::vector<std::string> arguments{"thermopix", "--uitest-fake-sensor"};
    AppEnvironment environment{arguments, {}, platform};
    RecordingStatusBar bar;
    std::unique_ptr<StatusItemController> controller;

    void SetUp() override { setCelsius(57); }

    void create(PixelPet pet = PixelPet::none) {
        environment.store().set(&Preferences::pet, pet);
        controller = std::make_unique<StatusItemController>(environment, bar, StatusMenuController::Actions{});
    }

    /// A controller that has drawn its first reading.
    void createAndDraw(PixelPet pet = PixelPet::none) {
        create(pet);
        loop.runPending();
        ASSERT_EQ(bar.images.size(), 1U);
    }

    FakeTemperatureSensor& sensor() { return dynamic_cast<FakeTemperatureSensor&>(environment.sensor()); }
    void setCelsius(double celsius) { sensor().samples = {{"pACC MTR Temp Sensor1", celsius}}; }
    [[nodiscard]] std::int64_t polls() { return sensor().sampleCallCount; }

    [[nodiscard]] Display display(std::int64_t value, PetMood mood = PetMood::content) const {
        Display expected;
        expected.value = value;
        expected.mood = mood;
        return expected;
    }

    /// The picture of a display under the current settings.
    [[nodiscard]] StatusItemImage picture(const Display& expected, bool blinking = false) const {
        return {StatusImageRenderer::image(expected, environment.preferences().appearance(blinking)),
                PixelRasterizer::digitsBitmap(expected)};
    }
};

TEST_F(StatusItemControllerTest, OneItemIsMadeWithTheMenuAndNothingIsDrawnBeforeTheFirstTick) {
    create();
    EXPECT_EQ(bar.itemsMade, 1);
    EXPECT_EQ(bar.menuSource, &controller->menuController());
    ASSERT_EQ(bar.menus.size(), 1U);
    EXPECT_EQ(bar.menus[0].items.size(), 25U);
    EXPECT_TRUE(bar.images.empty());
    EXPECT_EQ(polls(), 0);
    EXPECT_FALSE(loop.hasPostedWork()) << "The first delivery of the settings is no change";
}

TEST_F(StatusItemControllerTest, TheFirstTickDrawsPictureLabelAndMenu) {
    createAndDraw();
    EXPECT_EQ(bar.images, std::vector{picture(display(57))});
    EXPECT_EQ(bar.images[0].readout.description, "57 degrees Celsius");
    EXPECT_TRUE(bar.images[0].readout.isTemplate);
    EXPECT_EQ(bar.menus.back().items[0].title, "57°C");
}

TEST_F(StatusItemControllerTest, TicksComeAtTheStoredInterval) {
    environment.store().set(&Preferences::refreshInterval, RefreshInterval::tenSeconds);
    createAndDraw();
    EXPECT_EQ(loop.scheduled, (std::vector<Scheduled>{{0s, 0s, 10s, 2500ms}}));
    loop.advance(20s);
    EXPECT_EQ(polls(), 3);
}

TEST_F(StatusItemControllerTest, ATickThatChangesNothingDrawsNothing) {
    createAndDraw();
    const auto menus = bar.menus.size();
    loop.advance(2s);
    EXPECT_EQ(polls(), 2);
    EXPECT_EQ(bar.images.size(), 1U);
    EXPECT_EQ(bar.menus.size(), menus);
}

TEST_F(StatusItemControllerTest, ATickThatChangesTheDisplayDrawsOnce) {
    createAndDraw();
    setCelsius(90);
    loop.advance(2s);
    ASSERT_EQ(bar.images.size(), 2U);
    EXPECT_NE(bar.images[1], bar.images[0]);
    EXPECT_NE(bar.menus.back().items[0].title, "57°C");
}

TEST_F(StatusItemControllerTest, TheNoteFollowsTheReadingOriginThoughThePictureIsTheSame) {
    createAndDraw();
    EXPECT_EQ(bar.images.back().note, "");
    const std::vector<std::vector<SensorSample>> machines = {
        {{"GPU MTR Temp Sensor1", 57}, {"SOC MTR Temp Sensor1", 57}},
        {{"GPU MTR Temp Sensor1", 57}},
        {{"pACC MTR Temp Sensor1", 57}}};
    std::vector<std::string> notes;
    for (const auto& machine : machines) {
        sensor().samples = machine;
        loop.advance(4s);
        notes.push_back(bar.images.back().note);
        EXPECT_EQ(bar.images.back().readout, bar.images.front().readout);
    }
    EXPECT_EQ(notes, (std::vector<std::string>{"No CPU sensor answers: hottest of 2 others",
                                               "No CPU sensor answers: one other does", ""}));
    EXPECT_EQ(bar.images.size(), 4U);
}

TEST_F(StatusItemControllerTest, ALateReadingIsShownAtOnceUnlessTheDisplaysSleep) {
    createAndDraw();
    setCelsius(90);
    environment.onLateReading();
    EXPECT_EQ(polls(), 2);
    EXPECT_EQ(bar.images.size(), 2U);
    platform.manualSleep.send(SleepNotification::screensDidSleep);
    environment.onLateReading();
    EXPECT_EQ(polls(), 2);
}

TEST_F(StatusItemControllerTest, EachSettingOfTheReadingIsDrawnAtOnceWithAFreshReading) {
    createAndDraw();
    auto& store = environment.store();
    const auto expectRefresh = [this](std::size_t images, std::int64_t expectedPolls) {
        EXPECT_EQ(bar.images.size(), images - 1) << "The work waits for a later turn";
        loop.runPending();
        EXPECT_EQ(bar.images.size(), images);
        EXPECT_EQ(polls(), expectedPolls);
    };
    store.set(&Preferences::showsUnitLetter, true);
    expectRefresh(2, 2);
    EXPECT_EQ(bar.images.back(), picture(display(57)));
    store.set(&Preferences::style, PixelStyle::dotMatrix);
    expectRefresh(3, 3);
    EXPECT_TRUE(bar.images.back().readout.isRound);
    store.set(&Preferences::size, PixelSize::large);
    expectRefresh(4, 4);
    EXPECT_EQ(bar.images.back().readout.cell, 3.0);
    store.set(&Preferences::unit, TemperatureUnit::fahrenheit);
    expectRefresh(5, 5);
    EXPECT_EQ(bar.images.back().readout.description, "135 degrees Fahrenheit");
    EXPECT_EQ(loop.now(), 0s);
}

TEST_F(StatusItemControllerTest, AChangeOfSourceTakesAFreshReadingAtOnce) {
    createAndDraw();
    sensor().samples.push_back({"gas gauge battery", 31.0});
    environment.store().set(&Preferences::source, SensorSource::battery);
    loop.runPending();
    EXPECT_EQ(bar.images.back().readout.description, "31 degrees Celsius");
}

TEST_F(StatusItemControllerTest, ARefreshThatChangesNothingDrawsNothing) {
    createAndDraw();
    environment.store().set(&Preferences::showsUnitLetter, true);
    environment.store().set(&Preferences::showsUnitLetter, false);
    loop.runPending();
    EXPECT_EQ(polls(), 2);
    EXPECT_EQ(bar.images.size(), 1U) << "Both changes were over when their turn came";
}

TEST_F(StatusItemControllerTest, SettingsThatAreNotShownAreLeftAlone) {
    createAndDraw();
    const auto timers = loop.scheduled.size();
    auto& store = environment.store();
    store.set(&Preferences::showInDock, true);
    store.set(&Preferences::openAtLogin, true);
    store.set(&Preferences::showPreferencesOnLaunch, true);
    store.set(&Preferences::checkForUpdatesAutomatically, false);
    store.set(&Preferences::unit, store.preferences().unit);
    EXPECT_FALSE(loop.hasPostedWork());
    EXPECT_EQ(polls(), 1);
    EXPECT_EQ(loop.scheduled.size(), timers);
}

TEST_F(StatusItemControllerTest, ANewIntervalReArmsTheTimerAndTheSameOneDoesNot) {
    createAndDraw();
    auto& store = environment.store();
    store.set(&Preferences::refreshInterval, RefreshInterval::fiveSeconds);
    store.set(&Preferences::refreshInterval, RefreshInterval::fiveSeconds);
    loop.runPending();
    EXPECT_EQ(loop.scheduled, (std::vector<Scheduled>{{0s, 0s, 2s, 500ms}, {0s, 0s, 5s, 1250ms}}));
    EXPECT_EQ(polls(), 2) << "The new timer ticks at once";
    store.set(&Preferences::refreshInterval, RefreshInterval::tenSeconds);
    store.set(&Preferences::refreshInterval, RefreshInterval::fiveSeconds);
    loop.runPending();
    EXPECT_EQ(environment.scheduler().interval(), RefreshInterval::fiveSeconds);
}

TEST_F(StatusItemControllerTest, WithoutAPetNothingBlinks) {
    createAndDraw();
    EXPECT_EQ(loop.activeTimerCount(), 1U);
    loop.advance(60s);
    EXPECT_EQ(bar.images.size(), 1U);
}

TEST_F(StatusItemControllerTest, APetClosesItsEyesForAMomentThoughTheTemperatureIsConstant) {
    createAndDraw(PixelPet::cat);
    EXPECT_EQ(loop.scheduled[1], (Scheduled{0s, 5500ms, 5500ms, 400ms}));
    const auto open = picture(display(57));
    const auto closed = picture(display(57), true);
    ASSERT_NE(open, closed);
    loop.advance(5499ms);
    EXPECT_EQ(bar.images, (std::vector{open}));
    loop.advance(1ms);
    EXPECT_EQ(bar.images, (std::vector{open, closed}));
    loop.advance(159ms);
    EXPECT_EQ(bar.images.size(), 2U);
    loop.advance(1ms);
    EXPECT_EQ(bar.images, (std::vector{open, closed, open}));
    loop.advance(5339ms);
    EXPECT_EQ(bar.images.size(), 3U);
    loop.advance(1ms);
    EXPECT_EQ(bar.images.size(), 4U) << "Every 5.5 seconds, not 5.5 seconds after the eyes opened";
}

TEST_F(StatusItemControllerTest, ATickDuringABlinkKeepsTheEyesClosed) {
    createAndDraw(PixelPet::cat);
    loop.advance(5500ms);
    setCelsius(57.6);
    controller->refresh();
    EXPECT_EQ(bar.images.size(), 2U) << "The same display under the same appearance";
    environment.store().set(&Preferences::showsUnitLetter, true);
    loop.runPending();
    const auto value = environment.currentDisplay();
    EXPECT_EQ(bar.images.back(), picture(value, true));
}

TEST_F(StatusItemControllerTest, ABlinkOfAPetThatKeepsItsEyesOpenIsStillARedraw) {
    setCelsius(97);
    createAndDraw(PixelPet::cat);
    loop.advance(5660ms);
    EXPECT_EQ(bar.images.size(), 3U);
    EXPECT_EQ(bar.images[0], bar.images[1]);
}

TEST_F(StatusItemControllerTest, ChoosingNoPetTakesItAwayAtOnceAndEndsTheBlinking) {
    createAndDraw(PixelPet::cat);
    environment.store().set(&Preferences::pet, PixelPet::none);
    EXPECT_EQ(bar.images.size(), 1U);
    loop.runPending();
    ASSERT_EQ(bar.images.size(), 2U);
    EXPECT_EQ(bar.images[1], picture(display(57)));
    EXPECT_EQ(bar.images[1].readout.description, "57 degrees Celsius");
    EXPECT_EQ(polls(), 1) << "Without a fresh reading";
    EXPECT_EQ(loop.activeTimerCount(), 1U);
    loop.advance(60s);
    EXPECT_EQ(bar.images.size(), 2U);
}

TEST_F(StatusItemControllerTest, ChoosingNoPetDuringABlinkLeavesNoBlinkFrameBehind) {
    createAndDraw(PixelPet::cat);
    loop.advance(5550ms);
    environment.store().set(&Preferences::pet, PixelPet::none);
    loop.runPending();
    EXPECT_EQ(bar.images.size(), 3U);
    loop.advance(10s);
    EXPECT_EQ(bar.images.size(), 3U);
}

TEST_F(StatusItemControllerTest, ANewPetIsDrawnAtTheNextTickAndBlinksFiveAndAHalfSecondsAfterTheChoice) {
    createAndDraw();
    loop.advance(1s);
    environment.store().set(&Preferences::pet, PixelPet::ghost);
    loop.runPending();
    EXPECT_EQ(bar.images.size(), 1U) << "Not at once";
    loop.advance(999ms);
    EXPECT_EQ(bar.images.size(), 1U);
    loop.advance(1ms);
    ASSERT_EQ(bar.images.size(), 2U);
    EXPECT_EQ(bar.images[1], picture(display(57)));
    EXPECT_EQ(polls(), 2);
    loop.advance(4499ms);
    EXPECT_EQ(bar.images.size(), 2U);
    loop.advance(1ms);
    ASSERT_EQ(bar.images.size(), 3U);
    EXPECT_EQ(bar.images[2], picture(display(57), true));
}

TEST_F(StatusItemControllerTest, ANewPetIsDrawnByItsFirstBlinkWhenThatComesBeforeTheTick) {
    environment.store().set(&Preferences::refreshInterval, RefreshInterval::thirtySeconds);
    createAndDraw();
    environment.store().set(&Preferences::pet, PixelPet::mac);
    loop.advance(5499ms);
    EXPECT_EQ(bar.images.size(), 1U);
    loop.advance(1ms);
    EXPECT_EQ(bar.images.back(), picture(display(57), true));
}

TEST_F(StatusItemControllerTest, AnotherPetRestartsTheBlinkCycle) {
    createAndDraw(PixelPet::cat);
    loop.advance(5s);
    environment.store().set(&Preferences::pet, PixelPet::westie);
    loop.runPending();
    EXPECT_EQ(loop.scheduled.back(), (Scheduled{5s, 5500ms, 5500ms, 400ms}));
    EXPECT_EQ(loop.activeTimerCount(), 2U);
    loop.advance(5499ms);
    EXPECT_EQ(bar.images.size(), 2U) << "The new pet at the tick, no blink yet";
    loop.advance(1ms);
    EXPECT_EQ(bar.images.size(), 3U);
}

TEST_F(StatusItemControllerTest, ABlinkUnderWayWhenThePetChangesStillOpensTheEyes) {
    environment.store().set(&Preferences::refreshInterval, RefreshInterval::thirtySeconds);
    createAndDraw(PixelPet::cat);
    loop.advance(5550ms);
    environment.store().set(&Preferences::pet, PixelPet::westie);
    loop.runPending();
    EXPECT_EQ(bar.images.size(), 2U);
    loop.advance(110ms);
    ASSERT_EQ(bar.images.size(), 3U);
    EXPECT_EQ(bar.images[2], picture(display(57)));
}

TEST_F(StatusItemControllerTest, AfterWakeTheFirstTickDrawsEvenAnEqualReading) {
    createAndDraw();
    platform.manualSleep.send(SleepNotification::willSleep);
    loop.advance(10s);
    EXPECT_EQ(polls(), 1) << "Nothing is read during sleep";
    platform.manualSleep.send(SleepNotification::didWake);
    EXPECT_EQ(sensor().refreshCallCount, 1) << "The monitor starts afresh";
    EXPECT_EQ(bar.images.size(), 1U);
    loop.runPending();
    ASSERT_EQ(bar.images.size(), 2U);
    EXPECT_EQ(bar.images[1], bar.images[0]);
    platform.manualSleep.send(SleepNotification::screensDidWake);
    loop.advance(2s);
    EXPECT_EQ(bar.images.size(), 2U);
}

TEST_F(StatusItemControllerTest, NothingIsDueWhileTheDisplaysSleep) {
    createAndDraw(PixelPet::cat);
    loop.advance(5600ms);
    platform.manualSleep.send(SleepNotification::screensDidSleep);
    EXPECT_EQ(loop.activeTimerCount(), 0U);
    environment.store().set(&Preferences::pet, PixelPet::ghost);
    loop.advance(60s);
    EXPECT_EQ(loop.activeTimerCount(), 0U);
}

TEST_F(StatusItemControllerTest, ThePetBlinksAgainAfterWake) {
    createAndDraw(PixelPet::cat);
    platform.manualSleep.send(SleepNotification::willSleep);
    loop.advance(60s);
    platform.manualSleep.send(SleepNotification::didWake);
    loop.runPending();
    EXPECT_EQ(bar.images.back(), picture(display(57)));
    loop.advance(5500ms);
    EXPECT_EQ(bar.images.back(), picture(display(57), true));
}

TEST_F(StatusItemControllerTest, TheFirstReadingAfterWakeIsNotBlendedWithTheOneBeforeSleep) {
    createAndDraw();
    platform.manualSleep.send(SleepNotification::willSleep);
    setCelsius(30);
    platform.manualSleep.send(SleepNotification::didWake);
    loop.runPending();
    EXPECT_EQ(bar.images.back().readout.description, "30 degrees Celsius");
}

TEST_F(StatusItemControllerTest, BetweenWakeAndTheFirstTickNothingIsDrawn) {
    createAndDraw(PixelPet::cat);
    platform.manualSleep.send(SleepNotification::willSleep);
    platform.manualSleep.send(SleepNotification::didWake);
    environment.scheduler().stop();
    loop.advance(12s);
    EXPECT_EQ(bar.images.size(), 1U) << "Blinks have no display to show";
}

TEST_F(StatusItemControllerTest, AReadingThatIsUnavailableIsDrawnLikeAnyOther) {
    sensor().samples.clear();
    create();
    loop.advance(6s);
    EXPECT_EQ(bar.images.back().readout.description, "Temperature unavailable. Thermal state nominal.");
    EXPECT_EQ(bar.menus.back().items[0].title, "No reading");
}

TEST_F(StatusItemControllerTest, WithoutAButtonTheMenuIsStillUpdated) {
    bar.hasButton = false;
    create();
    loop.runPending();
    EXPECT_TRUE(bar.images.empty());
    EXPECT_EQ(bar.menus.back().items[0].title, "57°C");
}

TEST_F(StatusItemControllerTest, ChoosingInTheMenuChangesThePicture) {
    createAndDraw();
    for (const auto& item : controller->menuController().menu().items) {
        if (item.identifier == "menu.unit.fahrenheit") {
            bar.menuSource->perform(MenuItem(item));
            break;
        }
    }
    loop.runPending();
    EXPECT_EQ(bar.images.back().readout.description, "135 degrees Fahrenheit");
}

TEST_F(StatusItemControllerTest, NothingReachesAControllerThatIsGone) {
    createAndDraw(PixelPet::cat);
    loop.advance(5500ms);
    const auto before = polls();
    environment.store().set(&Preferences::style, PixelStyle::micro);
    environment.store().set(&Preferences::pet, PixelPet::none);
    controller.reset();
    EXPECT_EQ(bar.liveItems, 0);
    loop.advance(30s);
    platform.manualSleep.send(SleepNotification::willSleep);
    platform.manualSleep.send(SleepNotification::didWake);
    loop.advance(30s);
    EXPECT_EQ(polls(), before);
    EXPECT_EQ(sensor().refreshCallCount, 0);
}

}  // namespace
}  // namespace thermopix
