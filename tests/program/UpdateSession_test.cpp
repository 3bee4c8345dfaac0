// Updates as the user meets them: the program with a feed, its real check, a server and a notification service.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "fakes/TemporaryFolder.h"
#include "platform/linux/tray/TestBus.h"
#include "platform/linux/tray/TestTrayHost.h"
#include "platform/linux/updates/FakeNotificationService.h"
#include "program/FeedServer.h"
#include "program/Program.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

class UpdateSessionTest : public testing::Test {
protected:
    UpdateSessionTest() {
        heat(57);
        setClock();
    }

    void heat(int celsius) const {
        home.write("sys/class/hwmon/hwmon0/name", "coretemp\n");
        home.write("sys/class/hwmon/hwmon0/temp1_label", "Package id 0\n");
        home.write("sys/class/hwmon/hwmon0/temp1_input", std::to_string(celsius) + "000\n");
    }

    void start() {
        const auto registrations = host.registrations.size();
        Program::Environment variables{
            {"HOME", home.path().string()},
            {"THERMOPIX_SYSFS_ROOT", (home.path() / "sys").string()},
            {"THERMOPIX_TEST_CLOCK", (home.path() / "clock").string()},
            {"DBUS_SESSION_BUS_ADDRESS", g_getenv("DBUS_SESSION_BUS_ADDRESS")},
            {"DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + (home.path() / "none").string()},
            // Nothing between the check and the server.
            {"no_proxy", "*"},
        };
        if (hasFeed) {
            variables.emplace("THERMOPIX_TEST_FEED", server.feed());
        }
        program = std::make_unique<Program>(Texts{}, variables);
        ASSERT_TRUE(host.waitForRegistration(registrations + 1));
    }

    void quit() {
        program->signal(SIGTERM);
        ASSERT_TRUE(runUntil([this] { return program->hasEnded(); }));
        EXPECT_EQ(program->finish().status, 0);
        program.reset();
    }

    /// Time that passes at once, while the program runs and while it does not.
    void pass(std::chrono::seconds time) {
        ahead += time;
        setClock();
    }
    void setClock() const {
        const std::int64_t seconds = ahead.count();
        std::fstream file(home.path() / "clock", std::ios::binary | std::ios::in | std::ios::out);
        if (!file) {
            file.open(home.path() / "clock", std::ios::binary | std::ios::out);
        }
        file.write(reinterpret_cast<const char*>(&seconds), sizeof seconds);
    }

    [[nodiscard]] std::string remembered(const std::string& key) const {
        std::ifstream file(home.path() / ".config/thermopix" / key);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// Lets so much time pass that an automatic check is due, and waits until it has got its answer.
    void passUntilNextCheck() {
        const auto before = remembered("updates.lastCheck");
        const auto asked = server.requests.size();
        pass(25h);
        ASSERT_TRUE(runUntil([&] { return remembered("updates.lastCheck") != before; }));
        EXPECT_EQ(server.requests.size(), asked + 1);
        letItFinish();
    }

    /// The program and the notification service have heard and done all that was on its way between them.
    void letItFinish() {
        for (int i = 0; i < 3; ++i) {
            static_cast<void>(host.text("Title"));
            settle(notifications ? notifications->connection() : host.connection());
        }
    }

    /// The program's timers that are due have been served.
    void waitForNextReading() {
        const auto before = host.text("Title");
        heat(isHot ? 57 : 31);
        isHot = !isHot;
        ASSERT_TRUE(runUntil([&] { return host.text("Title") != before; }));
    }

    void click(const std::string& label) {
        for (const auto& entry : host.menu().children) {
            if (entry.property("label") == "'" + label + "'") {
                host.click(entry.id);
                return;
            }
        }
        ADD_FAILURE() << "no menu entry " << label;
    }
    void clickCheckForUpdates() { click("Check for Updates…"); }

    void waitForNotices(std::size_t count) {
        ASSERT_TRUE(runUntil([&] { return notifications->shown.size() >= count; }));
        letItFinish();
        ASSERT_EQ(notifications->shown.size(), count);
    }

    [[nodiscard]] Texts titles() const {
        Texts all;
        for (const auto& shown : notifications->shown) {
            all.push_back(shown.title);
        }
        return all;
    }

    TemporaryFolder home;
    TestTrayHost host;
    std::unique_ptr<FakeNotificationService> notifications =
        std::make_unique<FakeNotificationService>(Texts{"actions", "body"});
    FeedServer server;
    bool hasFeed = true;
    std::chrono::seconds ahead{0};
    bool isHot = false;
    std::unique_ptr<Program> program;
};

TEST_F(UpdateSessionTest, ANewVersionIsToldOnceOverManyChecksAndARestartAndNothingElseHappens) {
    server.offer("9.9");
    start();
    passUntilNextCheck();
    waitForNotices(1);
    EXPECT_EQ(titles(), Texts{"Thermopix 9.9 is available"});
    EXPECT_EQ(notifications->shown[0].actions, (Texts{"default", "Show Release", "show-release", "Show Release"}));
    EXPECT_FALSE(notifications->shown[0].isTransient);
    EXPECT_EQ(remembered("updates.announcedVersion"), "9.9");
    passUntilNextCheck();
    quit();

    start();
    passUntilNextCheck();
    EXPECT_EQ(notifications->shown.size(), 1U);
    server.offer("9.10");
    passUntilNextCheck();
    waitForNotices(2);
    EXPECT_EQ(titles(), (Texts{"Thermopix 9.9 is available", "Thermopix 9.10 is available"}));
    quit();
    // No download, no other page: the feed four times.
    EXPECT_EQ(server.requests, Texts(4, "GET /releases.xml HTTP/1.1"));
}

TEST_F(UpdateSessionTest, AutomaticChecksComeOnceADayAlsoOverARestart) {
    server.offer("0.0.1");
    start();
    passUntilNextCheck();
    pass(20h);
    ASSERT_NO_FATAL_FAILURE(waitForNextReading());
    quit();
    start();
    pass(3h);
    ASSERT_NO_FATAL_FAILURE(waitForNextReading());
    letItFinish();
    EXPECT_EQ(server.requests.size(), 1U);
    pass(2h);
    ASSERT_TRUE(runUntil([this] { return server.requests.size() == 2; }));
    EXPECT_TRUE(notifications->shown.empty());
}

TEST_F(UpdateSessionTest, NothingIsAskedWhileAutomaticChecksAreOffAlsoAfterARestart) {
    server.offer("9.9");
    home.write(".config/thermopix/preferences.v1", R"({"checkForUpdatesAutomatically":false})");
    for (int run = 0; run < 2; ++run) {
        start();
        for (int day = 0; day < 2; ++day) {
            pass(25h);
            ASSERT_NO_FATAL_FAILURE(waitForNextReading());
        }
        quit();
    }
    EXPECT_TRUE(server.requests.empty());
    EXPECT_NE(remembered("preferences.v1").find(R"("checkForUpdatesAutomatically":false)"), std::string::npos);
    start();
    clickCheckForUpdates();
    waitForNotices(1);
    EXPECT_EQ(titles(), Texts{"Thermopix 9.9 is available"});
    EXPECT_EQ(server.requests.size(), 1U);
}

TEST_F(UpdateSessionTest, EveryClickIsAnswered) {
    start();
    server.offer("0.0.1");
    clickCheckForUpdates();
    waitForNotices(1);
    server.refuse();
    clickCheckForUpdates();
    waitForNotices(2);
    server.offer("9.9");
    clickCheckForUpdates();
    waitForNotices(3);
    clickCheckForUpdates();
    waitForNotices(4);
    EXPECT_EQ(titles(), (Texts{"You're up to date", "The check for updates failed", "Thermopix 9.9 is available",
                               "Thermopix 9.9 is available"}));
}

TEST_F(UpdateSessionTest, AFailedAutomaticCheckIsSilentAndTriedAgain) {
    server.refuse();
    start();
    pass(2h);
    ASSERT_TRUE(runUntil([this] { return server.requests.size() == 1; }));
    ASSERT_TRUE(program->waitForErrors("the check for updates failed (refused)"));
    pass(2h);
    ASSERT_TRUE(runUntil([this] { return server.requests.size() == 2; }));
    letItFinish();
    EXPECT_TRUE(notifications->shown.empty());
    EXPECT_EQ(remembered("updates.lastCheck"), "");
}

TEST_F(UpdateSessionTest, WithoutAFeedTheAnswerSaysWhereVersionsComeFrom) {
    hasFeed = false;
    start();
    pass(25h);
    ASSERT_NO_FATAL_FAILURE(waitForNextReading());
    clickCheckForUpdates();
    waitForNotices(1);
    EXPECT_EQ(titles(), Texts{"Thermopix does not update itself"});
    EXPECT_EQ(notifications->shown[0].body, "New versions come from where it was installed from.");
    EXPECT_TRUE(server.requests.empty());
}

TEST_F(UpdateSessionTest, ADesktopWithoutNotificationsGetsItsAnswersInTheLog) {
    notifications.reset();
    server.offer("0.0.1");
    start();
    clickCheckForUpdates();
    ASSERT_TRUE(runUntil([this] { return server.requests.size() == 1; }));
    EXPECT_TRUE(program->waitForErrors("You're up to date: Thermopix ")) << program->errors();
}

}  // namespace
}  // namespace thermopix
