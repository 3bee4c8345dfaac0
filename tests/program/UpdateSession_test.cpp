// Updates as the user meets them: the program as a package, a package service and a notification service.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/notifications/FakeNotificationService.h"
#include "platform/linux/tray/TestBus.h"
#include "platform/linux/tray/TestTrayHost.h"
#include "platform/linux/updates/FakePackageKit.h"
#include "program/Program.h"
#include "program/ProgramHome.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;
using Fault = FakePackageKit::Fault;

class UpdateSessionTest : public testing::Test {
protected:
    UpdateSessionTest() { setClock(); }

    void start(const std::string& package = "thermopix") {
        const auto registrations = host.registrations.size();
        const std::string bus = g_getenv("DBUS_SESSION_BUS_ADDRESS");
        program = std::make_unique<Program>(Texts{},
                                            Program::Environment{{"HOME", home.path().string()},
                                                                 {"XDG_DATA_DIRS", home.path("share").string()},
                                                                 {"THERMOPIX_SYSFS_ROOT", home.path("sys").string()},
                                                                 {"THERMOPIX_TEST_CLOCK", home.path("clock").string()},
                                                                 {"THERMOPIX_TEST_PACKAGE", package},
                                                                 {"DBUS_SESSION_BUS_ADDRESS", bus},
                                                                 {"DBUS_SYSTEM_BUS_ADDRESS", bus}});
        ASSERT_TRUE(host.waitForRegistration(registrations + 1));
    }

    void quit() {
        program->signal(SIGTERM);
        ASSERT_TRUE(runUntil([this] { return program->hasEnded(); }));
        EXPECT_EQ(program->finish().status, 0);
        program.reset();
    }

    /// Time that passes at once, while the program runs and while it does not; what fell due has then been served.
    void pass(std::chrono::seconds time) {
        const auto before = program ? host.text("Title") : "";
        home.heat(isHot ? 57 : 31);
        isHot = !isHot;
        ahead += time;
        setClock();
        if (program) {
            ASSERT_TRUE(runUntil([&] { return host.text("Title") != before; }));
        }
    }
    void setClock() const {
        const std::int64_t seconds = ahead.count();
        std::fstream file(home.path("clock"), std::ios::binary | std::ios::in | std::ios::out);
        if (!file) {
            file.open(home.path("clock"), std::ios::binary | std::ios::out);
        }
        file.write(reinterpret_cast<const char*>(&seconds), sizeof seconds);
    }

    [[nodiscard]] std::string remembered(const std::string& key) const { return home.read(".config/thermopix/" + key); }

    [[nodiscard]] auto questions() const {
        return std::count(daemon->calls.begin(), daemon->calls.end(), "Resolve(4, ['thermopix'])");
    }

    void click(const std::string& label) { host.click(host.entry(label).id); }

    /// Everything on its way between the program and the services has arrived.
    void letItFinish() {
        for (int i = 0; i < 3; ++i) {
            static_cast<void>(host.text("Title"));
            settle(host.connection());
        }
    }
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

    ProgramHome home;
    TestTrayHost host;
    std::unique_ptr<FakeNotificationService> notifications =
        std::make_unique<FakeNotificationService>(Texts{"actions", "body"});
    std::unique_ptr<FakePackageKit> daemon = std::make_unique<FakePackageKit>();
    std::chrono::seconds ahead{0};
    bool isHot = false;
    std::unique_ptr<Program> program;
};

TEST_F(UpdateSessionTest, ANewVersionIsToldOnceOverManyDaysAndARestart) {
    home.write(
        "share/applications/centre.desktop",
        "[Desktop Entry]\nType=Application\nName=Software\nMimeType=x-scheme-handler/appstream;\nExec=true %u\n");
    home.write("share/applications/mimeinfo.cache", "[MIME Cache]\nx-scheme-handler/appstream=centre.desktop;\n");
    daemon->updates = {{5, "thermopix;1.3;amd64;main"}};
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(pass(9min));
    letItFinish();
    EXPECT_EQ(questions(), 0);
    ASSERT_NO_FATAL_FAILURE(pass(20min));
    ASSERT_NO_FATAL_FAILURE(waitForNotices(1));
    EXPECT_EQ(titles(), Texts{"Thermopix 1.3 is available"});
    EXPECT_EQ(notifications->shown[0].actions,
              (Texts{"default", "Show in Software Centre", "open", "Show in Software Centre"}));
    EXPECT_FALSE(notifications->shown[0].isTransient);
    ASSERT_TRUE(runUntil([this] { return remembered("updates.announcedVersion") == "1.3"; }));
    ASSERT_NO_FATAL_FAILURE(pass(20h));
    quit();
    ASSERT_NO_FATAL_FAILURE(pass(1h));
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(pass(2h));
    letItFinish();
    EXPECT_EQ(questions(), 1);
    ASSERT_NO_FATAL_FAILURE(pass(2h));
    ASSERT_TRUE(runUntil([this] { return questions() == 2; }));
    daemon->updates = {{5, "thermopix;1.4;amd64;main"}};
    ASSERT_NO_FATAL_FAILURE(pass(25h));
    ASSERT_NO_FATAL_FAILURE(waitForNotices(2));
    EXPECT_EQ(titles(), (Texts{"Thermopix 1.3 is available", "Thermopix 1.4 is available"}));
    quit();
    home.write(".config/thermopix/preferences.v1", R"({"checkForUpdatesAutomatically":false})");
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(pass(25h));
    letItFinish();
    EXPECT_EQ(questions(), 3);
}

TEST_F(UpdateSessionTest, EveryClickIsAnsweredOnceWhateverThePackageServiceDoes) {
    const std::string hostile = "thermopix;1.3\n<a href=\"x\">\x1B[31m;amd64;main";
    const std::string upToDate = "You're up to date";
    const std::string failed = "The check for updates failed";
    const struct {
        Fault fault;
        FakePackageKit::Packages updates;
        std::string title;
    } cases[]{{Fault::none, {}, upToDate},
              {Fault::refusesQuestions, {}, failed},
              {Fault::endsWithAnError, {}, failed},
              {Fault::strangerAnswers, {}, upToDate},
              {Fault::none, {{5, hostile}, {5, std::string(1000000, ';')}}, upToDate},
              {Fault::none, {{9, "thermopix;1.3;amd64;main"}}, upToDate},
              {Fault::none, {{0x50008, "thermopix;1.3;amd64;main"}}, "Thermopix 1.3 is available"},
              {Fault::saysNothing, {}, failed},
              {Fault::dies, {}, failed}};
    ASSERT_NO_FATAL_FAILURE(start());
    Texts expected;
    for (const auto& row : cases) {
        daemon->faults = {{"GetUpdates", row.fault}};
        daemon->updates = row.updates;
        const auto calls = daemon->calls.size();
        click("Check for Updates…");
        if (row.fault == Fault::saysNothing) {
            ASSERT_TRUE(runUntil([&] { return daemon->calls.size() == calls + 6; }));
            ASSERT_NO_FATAL_FAILURE(pass(50s));
            letItFinish();
            EXPECT_EQ(titles(), expected);
            ASSERT_NO_FATAL_FAILURE(pass(11s));
        }
        expected.push_back(row.title);
        ASSERT_NO_FATAL_FAILURE(waitForNotices(expected.size()));
        EXPECT_EQ(titles(), expected);
    }
}

TEST_F(UpdateSessionTest, ACopyThatIsNoPackageOrHasNobodyToAskSaysWhereNewVersionsComeFrom) {
    const auto expectAnswer = [this](const std::string& package, const std::string& answer) {
        ASSERT_NO_FATAL_FAILURE(start(package));
        click("Check for Updates…");
        ASSERT_TRUE(runUntil([this] { return !notifications->shown.empty(); }));
        EXPECT_EQ(notifications->shown[0].body, answer);
        notifications->shown.clear();
        quit();
    };
    daemon->installed.clear();
    expectAnswer("", "New versions come from where it was installed from.");
    EXPECT_EQ(questions(), 0);
    expectAnswer("thermopix", "New versions come from where it was installed from.");
    EXPECT_EQ(questions(), 1);
    daemon.reset();
    expectAnswer("thermopix", "New versions come with your system's updates.");
}

TEST_F(UpdateSessionTest, ADesktopWithoutNotificationsGetsItsAnswersInTheLog) {
    notifications.reset();
    ASSERT_NO_FATAL_FAILURE(start());
    click("Check for Updates…");
    ASSERT_TRUE(runUntil([this] { return daemon->calls.size() == 7; }));
    letItFinish();
    EXPECT_TRUE(
        program->waitForErrors("You're up to date: Thermopix 1.2 is the newest version that your system knows "
                               "of. It looked for new ones 5 hours ago."))
        << program->errors();
}

}  // namespace
}  // namespace thermopix
