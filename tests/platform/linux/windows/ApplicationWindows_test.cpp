#include "platform/linux/windows/ApplicationWindows.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "messages/Messages.h"
#include "platform/linux/windows/WindowStage.h"

namespace thermopix {
namespace {

class ApplicationWindowsTest : public WindowStage {
protected:
    using Requests = std::vector<WindowRequest>;

    std::shared_ptr<WindowStandIn> start() {
        process->send(ShowAboutPanel{});
        auto run = nextReadyRun();
        EXPECT_TRUE(settle(run));
        run->requests.clear();
        return run;
    }

    std::unique_ptr<ApplicationWindows> windows = std::make_unique<ApplicationWindows>(*process);
};

TEST_F(ApplicationWindowsTest, TellEveryNewProcessWhatTheWindowsHaveInCommon) {
    windows->setMainMenu(Messages::menu());
    windows->setActivationPolicy(ActivationPolicy::regular);
    windows->useActivationToken("token");
    EXPECT_FALSE(process->isRunning());
    const AboutPanelContent about{
        .applicationName = "Thermopix", .version = "1.2 (34)", .credits = "", .creditsStyle = {}};
    windows->showAboutPanel(about);
    auto run = nextReadyRun();
    EXPECT_EQ(received(run, 4), (Requests{UseActivationToken{"token"}, SetMainMenu{Messages::menu()},
                                          SetActivationPolicy{ActivationPolicy::regular}, ShowAboutPanel{about}}));
    run->command("abort");
    ASSERT_TRUE(untilEnd());
    windows->setActivationPolicy(ActivationPolicy::accessory);
    windows->showAboutPanel(about);
    run = nextReadyRun();
    EXPECT_EQ(received(run, 3), (Requests{SetMainMenu{Messages::menu()},
                                          SetActivationPolicy{ActivationPolicy::accessory}, ShowAboutPanel{about}}));
}

TEST_F(ApplicationWindowsTest, TellARunningProcessWhatChanges) {
    const auto run = start();
    windows->setActivationPolicy(ActivationPolicy::regular);
    windows->setMainMenu(Messages::menu());
    EXPECT_EQ(received(run, 2),
              (Requests{SetActivationPolicy{ActivationPolicy::regular}, SetMainMenu{Messages::menu()}}));
}

TEST_F(ApplicationWindowsTest, KeepATokenUntilThereIsAWindowAndUseItOnce) {
    windows->useActivationToken("first");
    windows->activate();
    process->send(ShowAboutPanel{});
    const auto run = nextReadyRun();
    EXPECT_EQ(received(run, 2), (Requests{UseActivationToken{"first"}, ShowAboutPanel{}}));
    run->requests.clear();
    windows->useActivationToken("second");
    windows->useActivationToken("third");
    windows->activate();
    windows->activate();
    process->send(ShowAboutPanel{});
    EXPECT_EQ(received(run, 2), (Requests{UseActivationToken{"third"}, ShowAboutPanel{}}));
}

TEST_F(ApplicationWindowsTest, KnowWhichWindowsAreVisibleAndBringThemForward) {
    const auto run = start();
    EXPECT_FALSE(windows->hasVisibleWindows());
    run->say(WindowVisibilityChanged{aboutPanelWindow, true, false});
    run->say(WindowVisibilityChanged{1, true, false});
    run->say(WindowVisibilityChanged{2, true, false});
    run->say(WindowVisibilityChanged{2, false, true});
    ASSERT_TRUE(untilEvents(4));
    EXPECT_TRUE(windows->hasVisibleWindows());
    windows->useActivationToken("token");
    windows->orderAllFront();
    EXPECT_EQ(received(run, 3),
              (Requests{UseActivationToken{"token"}, OrderWindowFront{aboutPanelWindow}, OrderWindowFront{1}}));
    run->command("abort");
    ASSERT_TRUE(untilEnd());
    EXPECT_FALSE(windows->hasVisibleWindows());
}

TEST_F(ApplicationWindowsTest, HandOnWhatTheMenuBarAndTheTaskbarAskFor) {
    const auto run = start();
    run->say(MainMenuActionChosen{MenuAction::terminate});
    run->say(Reopened{});
    ASSERT_TRUE(untilEvents(2));
    std::vector<MenuAction> actions;
    int reopenings = 0;
    windows->onAction = [&](MenuAction action) { actions.push_back(action); };
    windows->onReopen = [&] { ++reopenings; };
    run->say(MainMenuActionChosen{MenuAction::showAboutPanel});
    run->say(MainMenuActionChosen{MenuAction::terminate});
    run->say(Reopened{});
    ASSERT_TRUE(untilEvents(5));
    EXPECT_EQ(actions, (std::vector{MenuAction::showAboutPanel, MenuAction::terminate}));
    EXPECT_EQ(reopenings, 1);
}

}  // namespace
}  // namespace thermopix
