#include "platform/linux/windows/WindowClient.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "messages/MessageCodec.h"
#include "messages/Messages.h"
#include "messages/WindowProtocol.h"
#include "platform/linux/windows/WindowStage.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;

const WindowRequest settings = ShowWindow{1, {.title = "Settings", .width = 720, .height = 520, .identifier = "s"}};

WindowRequest content(std::size_t number, std::size_t bytes = 10, WindowId window = 1) {
    ViewNode node;
    node.identifier = std::to_string(number);
    node.text = std::string(bytes, 'x');
    return SetWindowContent{window, node};
}

std::size_t openDescriptors() {
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

class WindowClientTest : public WindowStage {
protected:
    using Requests = std::vector<WindowRequest>;
    using Run = std::shared_ptr<WindowStandIn>;

    /// A run that shows a window.
    Run start() {
        process->send(settings);
        return nextReadyRun();
    }

    /// One that reads nothing any more.
    Run startDeaf() {
        auto run = start();
        EXPECT_TRUE(settle(run));
        run->requests.clear();
        run->command("deafen");
        EXPECT_TRUE(until([&] { return run->hasTold("deaf"); }));
        return run;
    }

    /// One that lives on without its socket; requests go to the next from then on.
    Run startUnheard() {
        auto run = start();
        EXPECT_TRUE(settle(run));
        run->command("close");
        EXPECT_TRUE(until([&] { return loop.scheduled.back().first == 5s; }));
        return run;
    }

    void expectFailure(const std::string& sentence) {
        ASSERT_TRUE(untilEnd());
        EXPECT_EQ(ends, std::vector<std::string>{sentence});
        EXPECT_EQ(log.lines, std::vector<std::string>{"windows: " + sentence});
        EXPECT_FALSE(process->isRunning());
    }
};

TEST_F(WindowClientTest, IsStartedByTheFirstRequestThatShowsSomething) {
    process->send(SetMainMenu{Messages::menu()});
    process->send(content(1));
    process->send(HideStrip{});
    EXPECT_FALSE(process->isRunning());
    process->send(settings);
    EXPECT_TRUE(process->isRunning());
    process->send(content(2));
    EXPECT_EQ(received(nextReadyRun(), 2), (std::vector{settings, content(2)}));
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(WindowClientTest, IsStartedByEverythingThatShowsSomething) {
    for (const WindowRequest& request : Requests{settings, ShowAboutPanel{}, OpenPopupMenu{}, ShowStrip{}}) {
        ends.clear();
        process->send(request);
        const auto run = nextReadyRun();
        ASSERT_TRUE(untilRequests(run, 1));
        EXPECT_EQ(run->requests.front(), request);
        run->command("exit 0");
        ASSERT_TRUE(untilEnd());
    }
}

TEST_F(WindowClientTest, HearsFirstWhatTheHandlerOfItsStartSends) {
    const auto start = process->onStart([this] { process->send(SetActivationPolicy{ActivationPolicy::regular}); });
    process->send(settings);
    EXPECT_EQ(received(nextReadyRun(), 2), (Requests{SetActivationPolicy{ActivationPolicy::regular}, settings}));
}

TEST_F(WindowClientTest, DeliversEveryEventInOrder) {
    const auto run = start();
    auto expected = Messages::events();
    expected.erase(expected.begin());
    for (const auto& event : expected) {
        run->say(event);
    }
    ASSERT_TRUE(until([&] { return events.size() >= expected.size(); }));
    EXPECT_EQ(events, expected);
}

TEST_F(WindowClientTest, InheritsNothingButTheStandardStreamsAndItsSocket) {
    signal(SIGPIPE, SIG_IGN);
    const Descriptor inheritable(open("/dev/null", O_RDONLY));
    const auto run = start();
    EXPECT_EQ(run->toldAfter("descriptors"), " 0 1 2 3");
    EXPECT_EQ(run->toldAfter("SIGPIPE "), "default");
}

TEST_F(WindowClientTest, EndsQuietlyAndIsStartedAnew) {
    for (std::size_t round = 1; round <= 3; ++round) {
        const auto run = start();
        ASSERT_TRUE(untilRequests(run, 1));
        run->command("exit 0");
        ASSERT_TRUE(untilEnd(round));
        EXPECT_FALSE(process->isRunning());
        EXPECT_TRUE(until([&] { return run->isReaped(); }));
    }
    EXPECT_EQ(ends, (std::vector<std::string>{"", "", ""}));
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(WindowClientTest, DeliversItsLastWords) {
    const auto run = start();
    for (WindowId window = 1; window <= 2000; ++window) {
        run->say(WindowWillClose{window});
    }
    run->command("exit 0");
    ASSERT_TRUE(untilEnd());
    ASSERT_EQ(events.size(), 2000U);
    EXPECT_EQ(events.back(), WindowEvent(WindowWillClose{2000}));
}

TEST_F(WindowClientTest, LeavesNoDescriptorBehind) {
    const auto round = [&](const std::string& ending) {
        ends.clear();
        const auto run = start();
        run->command(ending);
        EXPECT_TRUE(untilEnd());
        EXPECT_TRUE(until([&] { return run->isReaped(); })) << ending;
    };
    round("exit 0");
    const std::size_t before = openDescriptors();
    for (const char* ending : {"exit 0", "exit 1", "abort", "say garbage", "exit 0", "abort"}) {
        round(ending);
    }
    // The stage holds one more for each run; GLib lets go of a process a little after its end.
    EXPECT_TRUE(until([&] { return openDescriptors() <= before + 6; })) << openDescriptors() << " after " << before;
}

TEST_F(WindowClientTest, TellsWhenItIsNotInstalledAndIsLookedForAgainAtTheNextRequest) {
    uninstall();
    for (int request = 0; request < 2; ++request) {
        ends.clear();
        log.lines.clear();
        process->send(settings);
        process->send(content(1));
        process->send(ShowAboutPanel{});
        EXPECT_TRUE(ends.empty()) << "told inside the call";
        expectFailure("thermopix-windows is not installed.");
    }
    install(WindowStandIns::executable);
    EXPECT_TRUE(untilRequests(start(), 1));
}

TEST_F(WindowClientTest, TellsWhenItCannotBeExecuted) {
    uninstall();
    folder.write("windows", "#!/no/such/interpreter\n");
    std::filesystem::permissions(installed(), std::filesystem::perms::owner_all);
    process->send(settings);
    expectFailure("Failed to execute child process “" + installed().string() + "” (No such file or directory).");
}

TEST_F(WindowClientTest, IsNotStartedWithoutADisplay) {
    for (const EnvironmentVariables& variables :
         std::vector<EnvironmentVariables>{{}, {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}}}) {
        auto without = options();
        without.variables = variables;
        WindowClient blind(without, loop, log);
        std::string failure;
        const auto end = blind.onEnd([&](const WindowProcessEnd& ended) { failure = ended.failure; });
        blind.send(settings);
        loop.runPending();
        EXPECT_EQ(failure, "There is no display to show windows on.");
    }
}

TEST_F(WindowClientTest, TellsHowItFailed) {
    struct Case {
        bool saysHello;
        std::vector<std::string> commands;
        std::string failure;
    };
    const auto say = [](const WindowEvent& event) { return "say " + MessageCodec::line(event); };
    const std::string malformed = "thermopix-windows sent a malformed message.";
    const std::vector<Case> cases{
        {true, {"abort"}, "thermopix-windows was ended by signal 6 (Aborted)."},
        {true, {"exit 4"}, "thermopix-windows ended with status 4."},
        {true, {R"(mumble {"windowWillClose":{"win)", "exit 1"}, "thermopix-windows ended with status 1."},
        {true, {say(Hello{})}, malformed},
        {true, {"flood 100000000"}, "thermopix-windows sent an endless message."},
        {false, {"exit 0"}, "thermopix-windows ended before it came up."},
        {false, {"exit " + std::to_string(WindowProtocol::noDisplayStatus)}, "There is no display to show windows on."},
        {false, {say(WindowWillClose{1})}, malformed},
        {false,
         {say(Hello{WindowProtocol::version + 1})},
         "thermopix-windows is of another version than this program."},
    };
    for (const auto& [saysHello, commands, failure] : cases) {
        ends.clear();
        log.lines.clear();
        process->send(settings);
        const auto run = saysHello ? nextReadyRun() : nextRun();
        for (const auto& command : commands) {
            run->command(command);
        }
        expectFailure(failure);
        EXPECT_TRUE(events.empty()) << failure;
    }
}

TEST_F(WindowClientTest, IsEndedWhenItDoesNotMakeSense) {
    const auto run = start();
    run->command("stubborn");
    run->command(R"(say {"windowWillClose":{"window":1}})");
    run->command(R"(say {"windowWillClose":{"window":"one"}})");
    run->command(R"(say {"windowWillClose":{"window":2}})");
    expectFailure("thermopix-windows sent a malformed message.");
    EXPECT_EQ(events, std::vector<WindowEvent>{WindowWillClose{1}});
    EXPECT_TRUE(until([&] { return run->isReaped(); }));
}

TEST_F(WindowClientTest, IsEndedWhenItDoesNotComeUp) {
    process->send(settings);
    const auto run = nextRun();
    loop.advance(29s);
    EXPECT_TRUE(ends.empty());
    loop.advance(1s);
    expectFailure("thermopix-windows did not come up.");
    EXPECT_TRUE(until([&] { return run->isReaped(); }));
}

TEST_F(WindowClientTest, MayLiveAsLongAsItLikesOnceItIsUp) {
    const auto run = start();
    run->say(WindowWillClose{1});
    ASSERT_TRUE(until([&] { return !events.empty(); }));
    loop.advance(24h);
    EXPECT_TRUE(process->isRunning());
    EXPECT_TRUE(settle(run));
}

TEST_F(WindowClientTest, MakesRoomForTheNextWhenItClosesItsSocket) {
    const auto run = startUnheard();
    process->send(ShowAboutPanel{});
    process->send(SetActivationPolicy{ActivationPolicy::regular});
    run->command("exit 0");
    const auto next = nextReadyRun();
    EXPECT_EQ(received(next, 2), (Requests{ShowAboutPanel{}, SetActivationPolicy{ActivationPolicy::regular}}));
    EXPECT_EQ(ends, std::vector<std::string>{""});
}

TEST_F(WindowClientTest, IsEndedWhenItLivesOnWithoutItsSocket) {
    const auto run = startUnheard();
    loop.advance(5s);
    expectFailure("thermopix-windows was ended by signal 9 (Killed).");
}

TEST_F(WindowClientTest, NeverHoldsUpTheProgramAndSeesOnlyTheNewestContent) {
    const auto run = startDeaf();
    // More than the socket holds.
    constexpr std::size_t large = 300'000;
    process->send(content(1, 2 * large));
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
    for (std::size_t number = 2; number <= 10; ++number) {
        process->send(content(number, large));
        process->send(content(number, 10, 2));
        process->send(OrderWindowFront{1});
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
    }
    run->command("listen");
    EXPECT_EQ(received(run, 4), (std::vector{content(1, 2 * large), content(10, large), content(10, 10, 2),
                                             WindowRequest(OrderWindowFront{1})}));
}

TEST_F(WindowClientTest, ReadsOnWhileTheOtherSideIsDeaf) {
    const auto run = startDeaf();
    process->send(content(1, 600'000));
    run->say(WindowWillClose{1});
    EXPECT_TRUE(until([&] { return !events.empty(); }));
}

TEST_F(WindowClientTest, EndsWithTheProgram) {
    const auto run = start();
    ASSERT_TRUE(settle(run));
    process.reset();
    EXPECT_TRUE(until([&] { return run->isReaped(); }));
    EXPECT_TRUE(ends.empty());
}

TEST_F(WindowClientTest, EndsWithTheProgramEvenWhenItHangs) {
    const auto run = start();
    run->command("stubborn");
    run->command("deafen");
    ASSERT_TRUE(until([&] { return run->hasTold("deaf"); }));
    process.reset();
    EXPECT_TRUE(until([&] { return run->isReaped(); }));
}

TEST_F(WindowClientTest, EndsWithTheProgramEvenWhenItIsStopped) {
    const auto run = start();
    ASSERT_TRUE(settle(run));
    ASSERT_EQ(kill(run->pid(), SIGSTOP), 0);
    process.reset();
    EXPECT_TRUE(until([&] { return run->isReaped(); }));
}

TEST_F(WindowClientTest, IsStartedAnewWhenItLeavesARequestUnread) {
    for (const WindowRequest& request : Requests{settings, ShowAboutPanel{}}) {
        ends.clear();
        log.lines.clear();
        const auto run = startDeaf();
        process->send(request);
        EXPECT_TRUE(until([&] { return process->isRunning(); }));
        loop.advance(WindowClient::patienceWithSilence - 1ms);
        EXPECT_TRUE(ends.empty());
        loop.advance(1ms);
        EXPECT_EQ(ends, std::vector<std::string>{""});
        EXPECT_EQ(log.lines,
                  std::vector<std::string>{"windows: thermopix-windows does not answer; it is started anew."});
        const auto next = nextReadyRun();
        EXPECT_EQ(received(next, 1), Requests{request});
        EXPECT_TRUE(until([&] { return run->isReaped(); }));
        next->command("exit 0");
        ASSERT_TRUE(untilEnd(2));
    }
}

TEST_F(WindowClientTest, IsStartedAnewWhenItIsStopped) {
    const auto run = start();
    ASSERT_TRUE(settle(run));
    ASSERT_EQ(kill(run->pid(), SIGSTOP), 0);
    process->send(settings);
    // What is sent besides does not look like an answer.
    for (std::size_t second = 1; second < 10; ++second) {
        process->send(content(second));
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
        loop.advance(1s);
    }
    EXPECT_TRUE(ends.empty());
    loop.advance(1s);
    EXPECT_EQ(received(nextReadyRun(), 1), Requests{settings});
    EXPECT_TRUE(until([&] { return run->isReaped(); }));
}

TEST_F(WindowClientTest, IsLeftAloneWhileItReads) {
    const auto run = start();
    for (std::size_t second = 1; second <= 30; ++second) {
        process->send(settings);
        process->send(content(second));
        ASSERT_TRUE(settle(run));
        loop.advance(1s);
    }
    EXPECT_TRUE(ends.empty());
    // One that is deaf to what nobody waits for is too.
    loop.advance(1min);
    run->command("deafen");
    ASSERT_TRUE(until([&] { return run->hasTold("deaf"); }));
    process->send(content(31));
    loop.advance(1h);
    EXPECT_TRUE(process->isRunning());
    EXPECT_EQ(standIns.count(), 1U);
}

TEST_F(WindowClientTest, MayBeAskedAgainByTheHandlerOfItsEnd) {
    const auto again = process->onEnd([&](const WindowProcessEnd& /*end*/) {
        if (ends.size() == 1) {
            process->send(settings);
        }
    });
    start()->command("abort");
    EXPECT_TRUE(untilRequests(nextReadyRun(), 1));
}

}  // namespace
}  // namespace thermopix
