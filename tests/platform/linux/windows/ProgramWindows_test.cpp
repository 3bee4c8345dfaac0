#include <gtest/gtest.h>
#include <signal.h>

#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "fakes/TemporaryFolder.h"
#include "menubar/MainMenu.h"
#include "platform/linux/tray/TestBus.h"
#include "platform/linux/tray/TestTrayHost.h"
#include "platform/linux/windows/WindowStandIns.h"
#include "program/Program.h"
#include "settings/Identifiers.h"

// The program itself, with the stand-in for its window process.
namespace thermopix {
namespace {

constexpr const char* stripPlatform = "xcb";

template <typename Request>
const Request* last(const std::shared_ptr<WindowStandIn>& run) {
    const Request* found = nullptr;
    for (const auto& request : run->requests) {
        if (const auto* match = std::get_if<Request>(&request)) {
            found = match;
        }
    }
    return found;
}

const ViewNode* node(const ViewNode& root, const std::string& identifier) {
    if (root.identifier == identifier) {
        return &root;
    }
    for (const auto& child : root.children) {
        if (const auto* found = node(child, identifier)) {
            return found;
        }
    }
    return nullptr;
}

class ProgramWindowsTest : public testing::Test {
protected:
    [[nodiscard]] Program::Environment session(bool hasBus) const {
        Program::Environment variables{{"HOME", home.path().string()},
                                       {"DISPLAY", ":no-such-display"},
                                       {"THERMOPIX_WINDOWS", WindowStandIns::executable},
                                       {WindowStandIns::variable, standIns.address()}};
        if (hasBus) {
            // Its bus is the session's from the first use on.
            static_cast<void>(TestBus::instance());
            variables["DBUS_SESSION_BUS_ADDRESS"] = g_getenv("DBUS_SESSION_BUS_ADDRESS");
        }
        return variables;
    }

    void start(const std::vector<std::string>& arguments, bool hasBus = false) {
        std::vector<std::string> all{"--uitest-fake-sensor"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        program = std::make_unique<Program>(all, session(hasBus));
    }

    // One start among others, as a user's.
    void startOnDesktop(const std::vector<std::string>& arguments = {}) {
        program = std::make_unique<Program>(arguments, session(true));
    }

    [[nodiscard]] bool until(const std::function<bool()>& condition) {
        return runUntil([&] {
            standIns.poll();
            return condition();
        });
    }

    std::shared_ptr<WindowStandIn> nextRun(const std::string& platform = "") {
        std::shared_ptr<WindowStandIn> run;
        EXPECT_TRUE(until([&] { return (run = standIns.take(platform)) != nullptr; })) << "no window process";
        if (run) {
            run->sayHello();
        }
        return run;
    }

    template <typename Request>
    [[nodiscard]] bool untilRequested(const std::shared_ptr<WindowStandIn>& run) {
        return until([&] { return last<Request>(run) != nullptr; });
    }

    // The Settings window, as it is opened.
    std::shared_ptr<WindowStandIn> settingsRun() {
        auto run = nextRun();
        EXPECT_TRUE(untilRequested<OrderWindowFront>(run));
        run->say(WindowVisibilityChanged{1, true, false});
        return run;
    }

    std::shared_ptr<WindowStandIn> openSettings() {
        start({"--uitest-show-preferences"});
        return settingsRun();
    }

    [[nodiscard]] std::string selection(const std::shared_ptr<WindowStandIn>& run, std::string_view identifier) const {
        const auto* content = last<SetWindowContent>(run);
        const auto* found = content == nullptr ? nullptr : node(content->root, std::string(identifier));
        return found == nullptr ? "" : found->selection;
    }

    void expectCleanEnd() {
        EXPECT_TRUE(until([&] { return program->hasEnded(); }));
        EXPECT_EQ(program->finish().status, 0);
    }

    WindowStandIns standIns;
    TemporaryFolder home;
    std::unique_ptr<Program> program;
};

TEST_F(ProgramWindowsTest, OpensSettingsWhenAskedAtTheStart) {
    const auto run = openSettings();
    ASSERT_GE(run->requests.size(), 5U);
    Menu mainMenu;
    mainMenu.items = {MainMenu::appMenuItem("Thermopix"), MainMenu::editMenuItem(), MainMenu::windowMenuItem()};
    EXPECT_EQ(run->requests[0], WindowRequest(SetMainMenu{mainMenu}));
    EXPECT_EQ(run->requests[1],
              WindowRequest(ShowWindow{
                  1, {.title = "Thermopix Settings", .width = 720, .height = 520, .identifier = "prefs.window"}}));
    ASSERT_NE(last<SetWindowContent>(run), nullptr);
    EXPECT_NE(node(last<SetWindowContent>(run)->root, "prefs.preview"), nullptr);
    ASSERT_NE(last<SetActivationPolicy>(run), nullptr);
    EXPECT_EQ(last<SetActivationPolicy>(run)->policy, ActivationPolicy::regular);
    EXPECT_EQ(run->requests.back(), WindowRequest(OrderWindowFront{1}));
}

TEST_F(ProgramWindowsTest, ShowsTheStripWhereADisplayHasNoBus) {
    start({});
    const auto run = nextRun(stripPlatform);
    ASSERT_TRUE(untilRequested<ShowStrip>(run));
    ASSERT_TRUE(untilRequested<SetStripReadout>(run));
    EXPECT_FALSE(last<SetStripReadout>(run)->image.isBlank());
    ASSERT_TRUE(untilRequested<SetStripMenu>(run));
    run->say(StripMoved{{12, 34}});
    const auto& items = last<SetStripMenu>(run)->menu.items;
    run->say(MenuItemChosen{MenuPlace::strip, items.back()});
    expectCleanEnd();
    std::string stored;
    std::getline(std::ifstream(home.path() / ".config/thermopix/strip.position"), stored);
    EXPECT_EQ(stored, "12 34");
}

TEST_F(ProgramWindowsTest, FollowsTheControlsOfItsWindowEverywhere) {
    const auto run = openSettings();
    const auto strip = nextRun(stripPlatform);
    ASSERT_EQ(selection(run, Identifiers::unit), "celsius");
    run->say(ControlOperated{1, {.identifier = std::string(Identifiers::unit), .value = "fahrenheit"}});
    EXPECT_TRUE(until([&] { return selection(run, Identifiers::unit) == "fahrenheit"; }));
    EXPECT_TRUE(until([&] {
        const auto* readout = last<SetStripReadout>(strip);
        return readout != nullptr && readout->image.description.value_or("").find("Fahrenheit") != std::string::npos;
    }));
}

TEST_F(ProgramWindowsTest, DoesWhatTheMenuBarAsksFor) {
    const auto run = openSettings();
    run->say(MainMenuActionChosen{MenuAction::showAboutPanel});
    ASSERT_TRUE(untilRequested<ShowAboutPanel>(run));
    EXPECT_EQ(last<ShowAboutPanel>(run)->content.applicationName, "Thermopix");
    run->say(MainMenuActionChosen{MenuAction::terminate});
    expectCleanEnd();
}

TEST_F(ProgramWindowsTest, GoesOnWhenItsWindowsCrash) {
    const auto run = openSettings();
    const auto strip = nextRun(stripPlatform);
    run->command("abort");
    ASSERT_TRUE(program->waitForErrors("thermopix-windows was ended by signal 6"));
    strip->say(MenuWillOpen{MenuPlace::strip});
    ASSERT_TRUE(untilRequested<SetStripMenu>(strip));
    const auto items = last<SetStripMenu>(strip)->menu.items;
    for (const auto& item : items) {
        if (item.action == MenuAction::openPreferencesItem) {
            strip->say(MenuItemChosen{MenuPlace::strip, item});
        }
    }
    EXPECT_NE(last<ShowWindow>(settingsRun()), nullptr);
}

TEST_F(ProgramWindowsTest, GoesOnWhereItsWindowsAreNotInstalled) {
    auto variables = session(false);
    variables["THERMOPIX_WINDOWS"] = (home.path() / "nowhere").string();
    program = std::make_unique<Program>(std::vector<std::string>{"--uitest-fake-sensor", "--uitest-show-preferences"},
                                        variables);
    EXPECT_TRUE(program->waitForErrors("[Thermopix/windows] thermopix-windows is not installed."));
    // Without tray and strip, the readout is in the terminal.
    EXPECT_TRUE(program->waitForOutput("degrees Celsius"));
    program->signal(SIGTERM);
    expectCleanEnd();
    EXPECT_EQ(standIns.count(), 0U);
}

TEST_F(ProgramWindowsTest, ShowsItsWindowWhenItIsStartedAgain) {
    TestTrayHost host;
    startOnDesktop();
    ASSERT_TRUE(host.waitForRegistration());
    auto variables = session(true);
    variables["XDG_ACTIVATION_TOKEN"] = "second-start";
    Program second({}, variables);
    auto run = settingsRun();
    ASSERT_NE(last<UseActivationToken>(run), nullptr);
    EXPECT_EQ(last<UseActivationToken>(run)->token, "second-start");
    EXPECT_TRUE(until([&] { return second.hasEnded(); }));
    EXPECT_EQ(second.finish().status, 0);

    // With a window on the screen it only comes to the front.
    run->requests.clear();
    variables["XDG_ACTIVATION_TOKEN"] = "third-start";
    Program third({}, variables);
    ASSERT_TRUE(untilRequested<OrderWindowFront>(run));
    EXPECT_EQ(last<ShowWindow>(run), nullptr);
    EXPECT_EQ(last<UseActivationToken>(run)->token, "third-start");
    EXPECT_TRUE(until([&] { return third.hasEnded(); }));
}

TEST_F(ProgramWindowsTest, OpensItsMenuForATrayThatCannot) {
    TestTrayHost host;
    startOnDesktop();
    ASSERT_TRUE(host.waitForRegistration());
    static_cast<void>(host.callItem("ContextMenu", g_variant_new("(ii)", 300, 20)));
    const auto run = nextRun();
    ASSERT_TRUE(untilRequested<OpenPopupMenu>(run));
    const auto& popup = *last<OpenPopupMenu>(run);
    EXPECT_EQ(popup.position, (ScreenPoint{300, 20}));
    run->say(MenuWillOpen{MenuPlace::popup});
    run->say(MenuItemChosen{MenuPlace::popup, popup.menu.items.back()});
    expectCleanEnd();
}

TEST_F(ProgramWindowsTest, ShowsTheStripUntilATrayAppears) {
    startOnDesktop();
    const auto run = nextRun(stripPlatform);
    ASSERT_TRUE(untilRequested<ShowStrip>(run));
    TestTrayHost host;
    EXPECT_TRUE(host.waitForRegistration());
    EXPECT_TRUE(untilRequested<HideStrip>(run));
    run->command("exit 0");
    EXPECT_TRUE(until([&] { return run->isReaped(); }));
}

TEST_F(ProgramWindowsTest, NeverLoadsAToolkitItself) {
    static_cast<void>(openSettings());
    std::ifstream maps("/proc/" + std::to_string(program->pid()) + "/maps");
    std::vector<std::string> libraries;
    for (std::string line; std::getline(maps, line);) {
        if (line.find(".so") != std::string::npos) {
            libraries.push_back(line.substr(line.rfind('/') + 1));
        }
    }
    EXPECT_GT(libraries.size(), 5U);
    for (const auto& library : libraries) {
        for (const char* toolkit : {"libQt", "libgtk", "libX11", "libxcb", "libwayland"}) {
            EXPECT_EQ(library.find(toolkit), std::string::npos) << library;
        }
    }
}

TEST_F(ProgramWindowsTest, TakesStoppedWindowsWithItHoweverItEnds) {
    for (const int number : {SIGTERM, SIGKILL}) {
        const auto run = openSettings();
        const auto strip = nextRun(stripPlatform);
        for (const auto& stopped : {run, strip}) {
            ASSERT_EQ(kill(stopped->pid(), SIGSTOP), 0);
        }
        program->signal(number);
        EXPECT_TRUE(until([&] { return strip->hasEnded() && run->hasEnded(); })) << number;
    }
}

TEST_F(ProgramWindowsTest, TakesItsWindowsWithIt) {
    const auto run = openSettings();
    const auto strip = nextRun(stripPlatform);
    program->signal(SIGKILL);
    EXPECT_TRUE(until([&] { return strip->hasEnded() && run->hasEnded(); }));
}

}  // namespace
}  // namespace thermopix
