#include "platform/linux/windows/StatusMenuPopup.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "platform/linux/tray/TestMenuSource.h"
#include "platform/linux/windows/WindowStage.h"

namespace thermopix {
namespace {

class StatusMenuPopupTest : public WindowStage {
protected:
    using Requests = std::vector<WindowRequest>;

    StatusMenuPopupTest() { popup->setMenu(&source); }

    std::shared_ptr<WindowStandIn> openIt() {
        popup->open(ScreenPoint{40, 50});
        auto run = nextReadyRun();
        EXPECT_TRUE(untilRequests(run, 1));
        run->say(MenuWillOpen{MenuPlace::popup});
        EXPECT_TRUE(untilEvents(1));
        run->requests.clear();
        return run;
    }

    void changeReading() {
        source.edit(TestMenuSource::reading, [](MenuItem& item) { item.title += "!"; });
    }

    TestMenuSource source;
    std::unique_ptr<StatusMenuPopup> popup = std::make_unique<StatusMenuPopup>(*process);
};

TEST_F(StatusMenuPopupTest, OpensTheMenuBroughtUpToDate) {
    source.onOpening = [this] { changeReading(); };
    // Under the pointer where no place is known.
    popup->open(std::nullopt);
    EXPECT_EQ(received(nextReadyRun(), 1), (Requests{OpenPopupMenu{source.menu.value(), std::nullopt}}));
    EXPECT_EQ(source.openings, 1);
    EXPECT_EQ(source.menu.value().items[TestMenuSource::reading].title, "72°C!");
}

TEST_F(StatusMenuPopupTest, KeepsAnOpenMenuUpToDateAndNoOther) {
    const auto run = openIt();
    changeReading();
    EXPECT_EQ(received(run, 1), (Requests{UpdatePopupMenu{source.menu.value()}}));
    run->requests.clear();
    run->say(MenuDidClose{MenuPlace::strip});
    run->say(MenuDidClose{MenuPlace::popup});
    ASSERT_TRUE(untilEvents(3));
    changeReading();
    ASSERT_TRUE(settle(run));
    EXPECT_TRUE(run->requests.empty());
}

TEST_F(StatusMenuPopupTest, DoesWhatTheUserChose) {
    const auto run = openIt();
    const MenuItem chosen = source.menu.value().items[TestMenuSource::fahrenheit];
    run->say(MenuItemChosen{MenuPlace::strip, source.menu.value().items[TestMenuSource::celsius]});
    run->say(MenuDidClose{MenuPlace::popup});
    run->say(MenuItemChosen{MenuPlace::popup, chosen});
    ASSERT_TRUE(untilEvents(4));
    EXPECT_EQ(source.performed, std::vector{chosen});
}

TEST_F(StatusMenuPopupTest, OpenedWhileItsProcessIsEndingComesUpInTheNext) {
    auto run = openIt();
    run->say(MenuDidClose{MenuPlace::popup});
    ASSERT_TRUE(untilEvents(2));
    popup->open(ScreenPoint{1, 2});
    run->command("exit 0");
    run = nextReadyRun();
    EXPECT_EQ(received(run, 1), (Requests{OpenPopupMenu{source.menu.value(), ScreenPoint{1, 2}}}));
    // Once is enough.
    run->command("exit 0");
    ASSERT_TRUE(untilEnd(2));
    EXPECT_FALSE(process->isRunning());
}

TEST_F(StatusMenuPopupTest, DoesNotComeBackAfterACrash) {
    popup->open(std::nullopt);
    nextReadyRun()->command("abort");
    ASSERT_TRUE(untilEnd());
    EXPECT_FALSE(process->isRunning());
    changeReading();
    EXPECT_FALSE(process->isRunning());
}

TEST_F(StatusMenuPopupTest, HasNothingToOpenWithoutAMenu) {
    popup->setMenu(nullptr);
    popup->open(std::nullopt);
    EXPECT_FALSE(process->isRunning());
}

TEST_F(StatusMenuPopupTest, ForgetsAMenuThatIsGone) {
    const auto run = openIt();
    popup->setMenu(nullptr);
    changeReading();
    run->say(MenuItemChosen{MenuPlace::popup, source.menu.value().items[TestMenuSource::quit]});
    ASSERT_TRUE(untilEvents(2));
    ASSERT_TRUE(settle(run));
    EXPECT_TRUE(run->requests.empty());
    EXPECT_TRUE(source.performed.empty());
}

}  // namespace
}  // namespace thermopix
