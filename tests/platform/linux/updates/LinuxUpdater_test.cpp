// The updater as a whole: a scripted check, a notification service, and a browser of the test's own.
#include "platform/linux/updates/LinuxUpdater.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "FakeNotificationService.h"
#include "fakes/FakeSystem.h"
#include "fakes/ManualMainLoop.h"
#include "fakes/MemoryUserDefaults.h"
#include "fakes/RecordingLog.h"
#include "fakes/TemporaryFolder.h"
#include "platform/linux/tray/TestBus.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

/// The desktop's choice of programs, in a home of its own; made before anything asks for it.
class TestBrowser {
public:
    TestBrowser() {
        const auto program = home_.script(
            "browser", "printf '%s %s\\n' \"$*\" \"$XDG_ACTIVATION_TOKEN\" >'" + (home_.path() / "new").string() +
                           "'\nmv '" + (home_.path() / "new").string() + "' '" + opened().string() + "'");
        home_.write("applications/test-browser.desktop",
                    "[Desktop Entry]\nType=Application\nName=Browser\nMimeType=x-scheme-handler/https;\nExec=" +
                        program.string() + " %u\n");
        home_.write("mimeapps.list", "[Default Applications]\nx-scheme-handler/https=test-browser.desktop\n");
        for (const char* variable : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_DIRS"}) {
            g_setenv(variable, home_.path().c_str(), TRUE);
        }
    }

    /// What the browser was started with, once it has been.
    [[nodiscard]] std::string openedPage() const {
        std::ifstream file(opened());
        std::string line;
        std::getline(file, line);
        return line;
    }
    void forget() const { std::filesystem::remove(opened()); }

private:
    [[nodiscard]] std::filesystem::path opened() const { return home_.path() / "opened"; }

    TemporaryFolder home_;
};

const TestBrowser browser;

class LinuxUpdaterTest : public ::testing::Test {
protected:
    LinuxUpdaterTest() {
        browser.forget();
        system.path = folder.path();
    }

    void start(const UpdateSource& source = {UpdateOrigin::feed, "https://example.org/feed.xml"}) {
        updater = std::make_unique<LinuxUpdater>(
            source, LinuxUpdater::Services{loop, defaults, log, system, TestBus::instance().session()});
    }
    void checkSays(const std::string& verdict) const {
        folder.script("thermopix-update-check",
                      "echo \"$*\" >>'" + (folder.path() / "asked").string() + "'\necho '" + verdict + "'");
    }
    void waitForNotices(std::size_t count) {
        ASSERT_TRUE(runUntil([&] { return service.shown.size() == count; }));
        settle(service.connection());
    }
    [[nodiscard]] Texts asked() const {
        Texts lines;
        std::ifstream file(folder.path() / "asked");
        for (std::string line; std::getline(file, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    TemporaryFolder folder;
    FakeNotificationService service{{"actions", "body"}};
    ManualMainLoop loop;
    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    RecordingLog log;
    FakeSystemInformation system;
    std::unique_ptr<LinuxUpdater> updater;
};

TEST_F(LinuxUpdaterTest, aClickAsksTheFeedAndIsAnswered) {
    checkSays(R"({"verdict":"upToDate"})");
    start();
    updater->checkForUpdates();
    waitForNotices(1);
    EXPECT_EQ(service.shown[0].title, "You're up to date");
    EXPECT_EQ(service.shown[0].body, "Thermopix 1.2 is the newest version.");
    EXPECT_EQ(asked(), Texts{"--feed https://example.org/feed.xml --version 1.2 --build 34"});
}

TEST_F(LinuxUpdaterTest, theButtonOpensExactlyTheReleasesPageInTheBrowser) {
    checkSays(
        R"({"verdict":"updateAvailable","version":"1.3","page":"https://example.org/r?v=1.3&x=%20#a","isCritical":true})");
    start();
    updater->checkForUpdates();
    waitForNotices(1);
    EXPECT_EQ(service.shown[0].title, "Thermopix 1.3 is available");
    EXPECT_EQ(service.shown[0].urgency, 2);
    EXPECT_EQ(browser.openedPage(), "");
    service.giveActivationToken(0, "token-5");
    service.invoke(0, "show-release");
    ASSERT_TRUE(runUntil([] { return !browser.openedPage().empty(); }));
    EXPECT_EQ(browser.openedPage(), "https://example.org/r?v=1.3&x=%20#a token-5");
    EXPECT_EQ(log.lines, Texts{"update: Thermopix 1.3 is available: https://example.org/r?v=1.3&x=%20#a"});
}

TEST_F(LinuxUpdaterTest, aDailyCheckAnnouncesOnce) {
    checkSays(R"({"verdict":"updateAvailable","version":"1.3","isCritical":false})");
    start();
    updater->setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(updater->automaticallyChecksForUpdates());
    loop.advance(1min);
    waitForNotices(1);
    EXPECT_EQ(defaults->data("updates.announcedVersion"), "1.3");
    EXPECT_TRUE(defaults->data("updates.lastCheck"));
    loop.advance(3h);
    EXPECT_EQ(asked().size(), 1U);
}

TEST_F(LinuxUpdaterTest, aCheckThatIsMissingIsAFailureThatIsTold) {
    start();
    updater->checkForUpdates();
    loop.runPending();
    waitForNotices(1);
    EXPECT_EQ(service.shown[0].title, "The check for updates failed");
    EXPECT_EQ(service.shown[0].body, "This copy of Thermopix lacks what it needs for it.");
}

TEST_F(LinuxUpdaterTest, aCopyOfAPackageManagerSaysSoAndAsksNobody) {
    checkSays(R"({"verdict":"upToDate"})");
    start({UpdateOrigin::packageManager, ""});
    updater->setAutomaticallyChecksForUpdates(true);
    updater->checkForUpdates();
    waitForNotices(1);
    EXPECT_EQ(service.shown[0].body, "New versions come with your system's updates.");
    loop.advance(72h);
    EXPECT_EQ(asked(), Texts());
}

TEST_F(LinuxUpdaterTest, itsEndDuringACheckIsQuiet) {
    checkSays(R"({"verdict":"upToDate"})");
    start();
    updater->checkForUpdates();
    updater.reset();
    settle(service.connection());
    EXPECT_TRUE(service.shown.empty());
}

TEST(UpdateSource, thisBuildIsAsItWasConfigured) {
    const auto source = UpdateSource::ofThisBuild();
    EXPECT_EQ(source.feed, source.origin == UpdateOrigin::feed ? THERMOPIX_FEED_URL : "");
    EXPECT_EQ(source.origin, THERMOPIX_CONFIGURED_ORIGIN);
}

}  // namespace
}  // namespace thermopix
