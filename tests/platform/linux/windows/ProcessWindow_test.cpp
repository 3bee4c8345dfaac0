#include "platform/linux/windows/ProcessWindow.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "messages/Messages.h"
#include "platform/linux/windows/WindowStage.h"

namespace thermopix {
namespace {

const WindowDescription description{.title = "Settings", .width = 720, .height = 520, .identifier = "prefs.window"};

ViewNode named(const std::string& text) {
    ViewNode node;
    node.text = text;
    return node;
}

class ProcessWindowTest : public WindowStage {
protected:
    ProcessWindowTest() {
        close_ = window->onWillClose([this] { words.push_back(window->isVisible() ? "closing visible" : "closing"); });
        visibility_ = window->onVisibilityChange([this](bool isVisible) {
            EXPECT_EQ(window->isVisible(), isVisible);
            words.emplace_back(isVisible ? "visible" : "hidden");
            if (isVisible) {
                window->setContent(named("drawn"));
            }
        });
        event_ =
            window->onEvent([this](const ViewEvent& event) { words.push_back(event.identifier + "=" + event.value); });
    }

    // What a new process hears of it.
    static std::vector<WindowRequest> everything() {
        return {ShowWindow{1, description}, SetWindowContent{1, named("drawn")}};
    }

    // Shown, and the process has said so.
    std::shared_ptr<WindowStandIn> showIt() {
        window->show();
        auto run = nextReadyRun();
        EXPECT_TRUE(untilRequests(run, 2));
        run->say(WindowVisibilityChanged{1, true, false});
        EXPECT_TRUE(until([&] { return !events.empty(); }));
        events.clear();
        run->requests.clear();
        words.clear();
        return run;
    }

    using Words = std::vector<std::string>;

    std::unique_ptr<ProcessWindowSystem> system = std::make_unique<ProcessWindowSystem>(*process);
    std::unique_ptr<Window> window = system->makeWindow(description);
    Words words;

private:
    Subscription close_;
    Subscription visibility_;
    Subscription event_;
};

TEST_F(ProcessWindowTest, CostsNoProcessBeforeItIsShown) {
    window->setContent(named("early"));
    window->makeKeyAndOrderFront();
    EXPECT_FALSE(process->isRunning());
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(window->isMiniaturized());
    EXPECT_TRUE(words.empty());
}

TEST_F(ProcessWindowTest, CountsAsVisibleAtOnce) {
    window->show();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(words, Words{"visible"});
    window->makeKeyAndOrderFront();
    EXPECT_EQ(received(nextReadyRun(), 3),
              (std::vector<WindowRequest>{ShowWindow{1, description}, SetWindowContent{1, named("drawn")},
                                          OrderWindowFront{1}}));
}

TEST_F(ProcessWindowTest, ToldToBeVisibleTwiceSaysSoOnce) {
    const auto run = showIt();
    window->show();
    run->say(WindowVisibilityChanged{1, true, false});
    ASSERT_TRUE(untilEvents(1));
    EXPECT_TRUE(words.empty());
    ASSERT_TRUE(settle(run));
    EXPECT_EQ(run->requests, (std::vector<WindowRequest>{ShowWindow{1, description}}));
}

TEST_F(ProcessWindowTest, HandsOnWhatTheUserDoes) {
    const auto run = showIt();
    run->say(ControlOperated{1, {.identifier = "prefs.unit", .value = "fahrenheit"}});
    run->say(ControlOperated{2, {.identifier = "other", .value = ""}});
    ASSERT_TRUE(untilEvents(2));
    EXPECT_EQ(words, Words{"prefs.unit=fahrenheit"});
}

TEST_F(ProcessWindowTest, CountsAsVisibleWhileItIsAboutToClose) {
    const auto run = showIt();
    run->say(WindowWillClose{2});
    run->say(WindowVisibilityChanged{2, false, false});
    run->say(WindowWillClose{1});
    ASSERT_TRUE(untilEvents(3));
    EXPECT_TRUE(words.empty()) << "told before the window has gone";
    run->say(WindowVisibilityChanged{1, false, false});
    ASSERT_TRUE(untilEvents(4));
    EXPECT_EQ(words, (Words{"closing visible", "hidden"}));
    EXPECT_FALSE(window->isVisible());
    run->command("exit 0");
    ASSERT_TRUE(untilEnd());
    EXPECT_EQ(words.size(), 2U);
}

TEST_F(ProcessWindowTest, ComesBackFromTheTaskbarWhenShown) {
    const auto run = showIt();
    run->say(WindowVisibilityChanged{1, false, true});
    ASSERT_TRUE(untilEvents(1));
    window->show();
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->isMiniaturized());
    EXPECT_EQ(received(run, 2).at(0), WindowRequest(ShowWindow{1, description}));
}

TEST_F(ProcessWindowTest, ClosesWhenItsProcessEndsHoweverItStands) {
    struct Case {
        const char* name;
        std::vector<WindowEvent> said;
        const char* ending;
        Words heard;
    };
    const WindowEvent miniaturized = WindowVisibilityChanged{1, false, true};
    const WindowEvent visible = WindowVisibilityChanged{1, true, false};
    for (const auto& [name, said, ending, heard] :
         {Case{"visible", {}, "abort", {"closing visible", "hidden"}},
          Case{"about to close", {WindowWillClose{1}}, "exit 0", {"closing visible", "hidden"}},
          Case{"miniaturized", {miniaturized}, "abort", {"hidden", "closing"}},
          Case{
              "visible again", {miniaturized, visible}, "abort", {"hidden", "visible", "closing visible", "hidden"}}}) {
        SCOPED_TRACE(name);
        ends.clear();
        events.clear();
        const auto run = showIt();
        for (const auto& event : said) {
            run->say(event);
        }
        ASSERT_TRUE(untilEvents(said.size()));
        EXPECT_EQ(window->isMiniaturized(), heard.back() == "closing");
        run->command(ending);
        ASSERT_TRUE(untilEnd());
        EXPECT_EQ(words, heard);
        EXPECT_FALSE(window->isVisible());
        EXPECT_FALSE(window->isMiniaturized());
    }
}

TEST_F(ProcessWindowTest, ClosesWhenThereIsNoProcessToShowIt) {
    uninstall();
    window->show();
    EXPECT_EQ(words, Words{"visible"});
    loop.runPending();
    EXPECT_EQ(words, (Words{"visible", "closing visible", "hidden"}));
}

TEST_F(ProcessWindowTest, IsShownAnewAfterACrash) {
    showIt()->command("abort");
    ASSERT_TRUE(untilEnd());
    window->show();
    EXPECT_EQ(received(nextReadyRun(), 2), everything());
}

TEST_F(ProcessWindowTest, ShownWhileItsProcessIsEndingComesUpInTheNext) {
    const auto run = showIt();
    // The user closes the last window; before the program hears of it, the window is wanted again.
    run->say(WindowWillClose{1});
    run->say(WindowVisibilityChanged{1, false, false});
    ASSERT_TRUE(untilEvents(2));
    words.clear();
    window->show();
    run->say(WindowWillClose{1});
    run->say(WindowVisibilityChanged{1, false, false});
    run->command("exit 0");
    EXPECT_EQ(received(nextReadyRun(), 2), everything());
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(words, (Words{"visible", "hidden", "visible"}));
}

TEST_F(ProcessWindowTest, ShownInVainTwiceCountsAsClosed) {
    window->show();
    nextReadyRun()->command("exit 0");
    nextReadyRun()->command("exit 0");
    ASSERT_TRUE(untilEnd(2));
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(process->isRunning());
}

TEST_F(ProcessWindowTest, ShownInAProcessThatDoesNotAnswerComesUpInTheNext) {
    for (const bool isOnlyBroughtForward : {false, true}) {
        const auto run = showIt();
        run->command("deafen");
        ASSERT_TRUE(until([&] { return run->hasTold("deaf"); }));
        if (isOnlyBroughtForward) {
            window->makeKeyAndOrderFront();
        } else {
            window->show();
        }
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
        loop.advance(WindowClient::patienceWithSilence);
        EXPECT_EQ(words, (Words{"hidden", "visible"}));
        EXPECT_TRUE(window->isVisible());
        const auto next = nextReadyRun();
        ASSERT_TRUE(until([&] { return next->requests.size() >= 2; }));
        EXPECT_EQ(next->requests[0], everything()[0]);
        EXPECT_EQ(next->requests[1], everything()[1]);
        next->command("exit 0");
        ASSERT_TRUE(until([&] { return !process->isRunning(); }));
        next->requests.clear();
    }
}

TEST_F(ProcessWindowTest, LeavesTheScreenWithItsObject) {
    const auto run = showIt();
    window.reset();
    EXPECT_EQ(received(run, 1).at(0), WindowRequest(DiscardWindow{1}));
}

TEST_F(ProcessWindowTest, HasANumberOfItsOwn) {
    const auto run = showIt();
    const auto other = system->makeWindow({.title = "Other", .width = 1, .height = 1, .identifier = "other"});
    other->show();
    ASSERT_TRUE(untilRequests(run, 1));
    EXPECT_EQ(std::get<ShowWindow>(run->requests.front()).window, 2U);
}

}  // namespace
}  // namespace thermopix
