#include "platform/linux/windows/StripStatusBar.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "fakes/MemoryUserDefaults.h"
#include "platform/linux/tray/TestMenuSource.h"
#include "platform/linux/windows/WindowStage.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;

StatusItemImage image(std::int64_t width, const std::string& description = "52 degrees") {
    StatusItemImage image;
    image.readout.description = description;
    image.readout.bitmap = PixelBitmap::blank(width, 1);
    image.readout.cell = 2;
    return image;
}

class StripStatusBarTest : public WindowStage {
protected:
    using Requests = std::vector<WindowRequest>;

    StripStatusBarTest() { item->setMenu(source); }

    std::shared_ptr<WindowStandIn> showIt() {
        item->setImage(image(1));
        auto run = nextReadyRun();
        EXPECT_TRUE(untilRequests(run, 3));
        run->requests.clear();
        return run;
    }

    // What a new process hears.
    [[nodiscard]] Requests everything(std::int64_t width) const {
        return {SetStripReadout{image(width).readout}, SetStripMenu{source.menu.value()}, ShowStrip{std::nullopt}};
    }

    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    TestMenuSource source;
    std::unique_ptr<StripStatusBar> bar = std::make_unique<StripStatusBar>(*process, loop, defaults);
    std::unique_ptr<StatusItem> item = bar->makeStatusItem();
};

TEST_F(StripStatusBarTest, ShowsPictureLabelAndMenuAtTheFirstPicture) {
    EXPECT_TRUE(item->hasButton());
    EXPECT_FALSE(process->isRunning());
    item->setImage(image(1));
    EXPECT_EQ(received(nextReadyRun(), 3), everything(1));
}

TEST_F(StripStatusBarTest, SendsWhatHasChangedAndNothingElse) {
    const auto run = showIt();
    item->setImage(image(1));
    StatusItemImage sameReadout = image(1);
    sameReadout.digits = PixelBitmap::blank(3, 3);
    item->setImage(sameReadout);
    ASSERT_TRUE(settle(run));
    EXPECT_TRUE(run->requests.empty());
    item->setImage(image(2));
    ASSERT_TRUE(untilRequests(run, 1));
    item->setImage(image(2, "53 degrees"));
    ASSERT_TRUE(untilRequests(run, 2));
    source.edit(TestMenuSource::reading, [](MenuItem& entry) { entry.title = "53°C"; });
    EXPECT_EQ(received(run, 3),
              (Requests{SetStripReadout{image(2).readout}, SetStripReadout{image(2, "53 degrees").readout},
                        SetStripMenu{source.menu.value()}}));
}

TEST_F(StripStatusBarTest, DoesWhatTheUserChoseInItsMenu) {
    const auto run = showIt();
    run->say(MenuWillOpen{MenuPlace::popup});
    run->say(MenuWillOpen{MenuPlace::strip});
    const MenuItem chosen = source.menu.value().items[TestMenuSource::quit];
    run->say(MenuItemChosen{MenuPlace::popup, source.menu.value().items[TestMenuSource::celsius]});
    run->say(MenuItemChosen{MenuPlace::strip, chosen});
    ASSERT_TRUE(untilEvents(4));
    EXPECT_EQ(source.openings, 1);
    EXPECT_EQ(source.performed, std::vector{chosen});
}

TEST_F(StripStatusBarTest, StaysWhereTheUserHasMovedIt) {
    const auto run = showIt();
    run->say(StripMoved{{1600, -4}});
    ASSERT_TRUE(untilEvents(1));
    EXPECT_EQ(defaults->values["strip.position"], "1600 -4");
    run->command("abort");
    ASSERT_TRUE(untilEnd());
    loop.advance(1s);
    const auto next = nextReadyRun();
    ASSERT_TRUE(untilRequests(next, 3));
    EXPECT_EQ(next->requests.back(), WindowRequest(ShowStrip{ScreenPoint{1600, -4}}));
}

TEST_F(StripStatusBarTest, ComesBackWithAllThatItShowed) {
    showIt()->command("abort");
    ASSERT_TRUE(untilEnd());
    item->setImage(image(5));
    source.edit(TestMenuSource::reading, [](MenuItem& entry) { entry.title = "55°C"; });
    EXPECT_FALSE(process->isRunning()) << "a change is no reason to come back early";
    loop.advance(1s);
    EXPECT_EQ(received(nextReadyRun(), 3), everything(5));
}

TEST_F(StripStatusBarTest, WaitsLongerEachTimeThatItDiesYoung) {
    uninstall();
    item->setImage(image(1));
    loop.runPending();
    std::vector<std::chrono::nanoseconds> pauses;
    for (int i = 0; i < 11; ++i) {
        const auto asked = loop.scheduled.back();
        pauses.push_back(asked.first);
        loop.advance(asked.first);
        ASSERT_EQ(ends.size(), static_cast<std::size_t>(i) + 2);
    }
    EXPECT_EQ(pauses, (std::vector<std::chrono::nanoseconds>{1s, 2s, 4s, 8s, 16s, 32s, 64s, 128s, 256s, 300s, 300s}));
}

TEST_F(StripStatusBarTest, IsBackSoonAfterALongLife) {
    std::size_t died = 0;
    const auto expectPause = [&](const std::shared_ptr<WindowStandIn>& run, std::chrono::seconds pause) {
        run->command("abort");
        ASSERT_TRUE(untilEnd(++died));
        EXPECT_EQ(loop.scheduled.back().first, pause);
        loop.advance(pause);
    };
    expectPause(showIt(), 1s);
    const auto second = nextReadyRun();
    ASSERT_TRUE(settle(second));
    expectPause(second, 2s);
    const auto third = nextReadyRun();
    third->say(MenuWillOpen{MenuPlace::strip});
    ASSERT_TRUE(untilEvents(1));
    loop.advance(60s);
    expectPause(third, 1s);
}

TEST_F(StripStatusBarTest, GoesWithItsItem) {
    const auto run = showIt();
    item.reset();
    EXPECT_EQ(received(run, 1), Requests{HideStrip{}});
    run->command("exit 0");
    ASSERT_TRUE(untilEnd());
    loop.advance(1h);
    EXPECT_FALSE(process->isRunning());
}

TEST_F(StripStatusBarTest, ReturnsToAProcessThatHasNotEndedYet) {
    const auto run = showIt();
    item.reset();
    item = bar->makeStatusItem();
    item->setMenu(source);
    item->setImage(image(2));
    EXPECT_EQ(received(run, 4), (Requests{HideStrip{}, SetStripMenu{source.menu.value()},
                                          SetStripReadout{image(2).readout}, ShowStrip{std::nullopt}}));
}

TEST(StripPosition, IsTwoNumbers) {
    EXPECT_EQ(stripPositionText({-10, 2147483647}), "-10 2147483647");
    EXPECT_EQ(stripPosition("-10 2147483647"), (ScreenPoint{-10, 2147483647}));
    for (const char* text : {"", " ", "1", "1 ", " 1", "1 2 ", "1  2", "1 2 3", "1 2147483648", "a b", "1,2"}) {
        EXPECT_EQ(stripPosition(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace thermopix
