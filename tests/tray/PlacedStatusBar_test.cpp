#include "tray/PlacedStatusBar.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <vector>

#include "fakes/ManualMainLoop.h"
#include "fakes/RecordingStatusBar.h"
#include "platform/linux/tray/TestMenuSource.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;

class PlacedStatusBarTest : public testing::Test {
protected:
    void find(std::optional<bool> hasTray) {
        StatusPlaceOffer next = offer.value();
        next.hasTray = hasTray;
        offer.send(next);
    }
    void choose(TrayPlace choice) {
        StatusPlaceOffer next = offer.value();
        next.choice = choice;
        offer.send(next);
    }

    [[nodiscard]] static StatusItemImage image(std::int64_t width) {
        StatusItemImage made;
        made.digits = PixelBitmap::blank(width, 1);
        return made;
    }

    ManualMainLoop loop;
    RecordingStatusBar tray;
    RecordingStatusBar strip;
    RecordingStatusBar terminal;
    Published<StatusPlaceOffer> offer{StatusPlaceOffer{.choice = {},
                                                       .isTerminalRequested = false,
                                                       .hasSessionBus = true,
                                                       .hasDisplay = true,
                                                       .hasTray = std::nullopt}};
    PlacedStatusBar bar{{.tray = tray, .strip = strip, .terminal = terminal, .offer = offer}, loop};
    TestMenuSource source;
    std::unique_ptr<StatusItem> item = bar.makeStatusItem();
};

TEST_F(PlacedStatusBarTest, HoldsAnItemReadyForTheTrayFromTheStart) {
    EXPECT_TRUE(item->hasButton());
    EXPECT_EQ(tray.liveItems, 1);
    EXPECT_EQ(strip.liveItems, 0);
    loop.advance(1h);
    EXPECT_EQ(strip.liveItems, 0) << "nobody has said that there is no tray";
}

TEST_F(PlacedStatusBarTest, ShowsTheStripOnceItIsClearThatThereIsNoTray) {
    item->setMenu(source);
    item->setImage(image(1));
    find(false);
    loop.advance(PlacedStatusBar::patience - 1ms);
    EXPECT_EQ(strip.liveItems, 0);
    loop.advance(1ms);
    EXPECT_EQ(strip.liveItems, 1);
    EXPECT_EQ(strip.images, std::vector{image(1)});
    EXPECT_EQ(strip.menuSource, &source);
    EXPECT_EQ(tray.liveItems, 1);
}

TEST_F(PlacedStatusBarTest, GivesWayToTheTrayAtOnceAndReturnsWhenThatGoes) {
    find(false);
    loop.advance(1min);
    ASSERT_EQ(strip.liveItems, 1);
    find(true);
    EXPECT_EQ(strip.liveItems, 0);
    find(false);
    loop.advance(1min);
    EXPECT_EQ(strip.liveItems, 1);
    EXPECT_EQ(tray.itemsMade, 1) << "the item of the tray stays the same throughout";
}

TEST_F(PlacedStatusBarTest, ShowsTheReadoutInATerminalWithoutADisplayUntilATrayAppears) {
    StatusPlaceOffer next = offer.value();
    next.hasDisplay = false;
    offer.send(next);
    item->setImage(image(1));
    find(false);
    loop.advance(PlacedStatusBar::patience);
    EXPECT_EQ(terminal.images, std::vector{image(1)});
    EXPECT_EQ(tray.images, std::vector{image(1)}) << "ready for the tray";
    find(true);
    EXPECT_EQ(terminal.liveItems, 0);
    EXPECT_EQ(strip.itemsMade, 0);
    EXPECT_EQ(tray.itemsMade, 1);
}

TEST_F(PlacedStatusBarTest, DoesNotFlickerWhenAPanelRestarts) {
    find(true);
    for (int restart = 0; restart < 5; ++restart) {
        find(false);
        loop.advance(PlacedStatusBar::patience - 1ms);
        find(true);
    }
    loop.advance(1h);
    EXPECT_EQ(strip.itemsMade, 0);
}

TEST_F(PlacedStatusBarTest, TellsBothPlacesWhatTheItemShows) {
    find(false);
    loop.advance(1min);
    item->setImage(image(3));
    item->setMenu(source);
    for (const auto* place : {&tray, &strip}) {
        EXPECT_EQ(place->images, std::vector{image(3)});
        EXPECT_EQ(place->menuSource, &source);
    }
}

TEST_F(PlacedStatusBarTest, FollowsTheUsersChoice) {
    find(true);
    choose(TrayPlace::strip);
    EXPECT_EQ(tray.liveItems, 0);
    EXPECT_EQ(strip.liveItems, 1);
    choose(TrayPlace::tray);
    EXPECT_EQ(tray.liveItems, 1);
    EXPECT_EQ(strip.liveItems, 0);
    find(false);
    loop.advance(1h);
    EXPECT_EQ(strip.liveItems, 0);
    choose(TrayPlace::automatic);
    loop.advance(1h);
    EXPECT_EQ(strip.liveItems, 1);
}

TEST_F(PlacedStatusBarTest, PlacesAnItemThatIsMadeLate) {
    find(false);
    loop.advance(1min);
    item.reset();
    EXPECT_EQ(tray.liveItems + strip.liveItems, 0);
    item = bar.makeStatusItem();
    EXPECT_EQ(tray.liveItems, 1);
    EXPECT_EQ(strip.liveItems, 1);
}

TEST_F(PlacedStatusBarTest, LeavesThePlacesAloneWithoutAnItem) {
    item.reset();
    find(false);
    loop.advance(1min);
    EXPECT_EQ(strip.itemsMade, 0);
}

TEST_F(PlacedStatusBarTest, TellsWhichMenuTheItemHas) {
    std::vector<MenuSource*> menus;
    bar.onMenu = [&](MenuSource* menu) { menus.push_back(menu); };
    item->setMenu(source);
    item.reset();
    EXPECT_EQ(menus, (std::vector<MenuSource*>{&source, nullptr}));
}

}  // namespace
}  // namespace thermopix
