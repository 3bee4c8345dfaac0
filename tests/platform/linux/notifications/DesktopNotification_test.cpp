#include "platform/linux/notifications/DesktopNotification.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "FakeNotificationService.h"
#include "fakes/RecordingLog.h"
#include "fakes/TemporaryFolder.h"
#include "platform/linux/tray/TestBus.h"

namespace thermopix {
namespace {

using Texts = std::vector<std::string>;

/// The desktop's choice of programs, in a home of its own; made before anything asks for it.
class TestSoftwareCentre {
public:
    TestSoftwareCentre() {
        const auto program = home_.script(
            "centre", "printf '%s %s\\n' \"$*\" \"$XDG_ACTIVATION_TOKEN\" >'" + home_.path("new").string() + "'\nmv '" +
                          home_.path("new").string() + "' '" + home_.path("opened").string() + "'");
        home_.write("applications/centre.desktop",
                    "[Desktop Entry]\nType=Application\nName=Software\nMimeType=x-scheme-handler/appstream;\nExec=" +
                        program.string() + " %u\n");
        home_.write("mimeapps.list", "[Default Applications]\nx-scheme-handler/appstream=centre.desktop\n");
        for (const char* variable : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_DIRS"}) {
            g_setenv(variable, home_.path().c_str(), TRUE);
        }
    }

    /// What it was started with, once it has been.
    [[nodiscard]] std::string takeOpened() const {
        auto line = home_.read("opened");
        if (!line.empty()) {
            std::filesystem::remove(home_.path("opened"));
        }
        return line;
    }

private:
    TemporaryFolder home_;
};

const TestSoftwareCentre centre;

const UserNotice answer{.title = "You're up to date", .body = "1 < 2 & so on", .isAnswer = true};

UserNotice newsOf(const std::string& version) {
    return {.title = version + " is available",
            .body = "You have 1.2.",
            .button = UserNotice::Button{"Show", "appstream:" + version + "?a=1&b=%20"}};
}

class DesktopNotificationTest : public ::testing::Test {
protected:
    void startService(Texts capabilities = {"actions", "body"}) {
        service = std::make_unique<FakeNotificationService>(std::move(capabilities));
    }

    /// Whether the desktop took the notice.
    bool show(const UserNotice& notice) {
        std::optional<bool> wasShown;
        notification.show(notice, [&wasShown](bool shown) { wasShown = shown; });
        EXPECT_TRUE(runUntil([&wasShown] { return wasShown.has_value(); }));
        if (service) {
            settle(service->connection());
        }
        return wasShown.value_or(false);
    }
    void expectOpened(const std::string& line) const {
        std::string opened;
        EXPECT_TRUE(runUntil([&] { return !(opened = centre.takeOpened()).empty(); }));
        EXPECT_EQ(opened, line + "\n");
    }

    RecordingLog log;
    std::unique_ptr<FakeNotificationService> service;
    DesktopNotification notification{TestBus::instance().session(), log};
};

TEST_F(DesktopNotificationTest, AnAnswerIsATransientNotificationAndAnythingElseStaysAndMayHaveAButton) {
    startService();
    EXPECT_TRUE(show(answer));
    EXPECT_TRUE(show(newsOf("1.3")));
    ASSERT_EQ(service->shown.size(), 2U);
    const auto& shown = service->shown[0];
    EXPECT_EQ(shown.application, "Thermopix");
    EXPECT_EQ(shown.icon, "io.github.thermopix.Thermopix");
    EXPECT_EQ(shown.desktopEntry, "io.github.thermopix.Thermopix");
    EXPECT_EQ(shown.title, "You're up to date");
    EXPECT_EQ(shown.body, "1 < 2 & so on");
    EXPECT_EQ(shown.actions, Texts());
    EXPECT_TRUE(shown.isTransient);
    EXPECT_EQ(shown.timeout, -1);
    EXPECT_EQ(shown.replaces, 0U);
    EXPECT_EQ(service->shown[1].actions, (Texts{"default", "Show", "open", "Show"}));
    EXPECT_FALSE(service->shown[1].isTransient);
}

TEST_F(DesktopNotificationTest, ThereIsNoButtonThatWouldNotWork) {
    startService();
    auto notice = newsOf("1.3");
    notice.button->address = "no-such-scheme:1.3";
    EXPECT_TRUE(show(notice));
    service->capabilities = {"body"};
    EXPECT_TRUE(show(newsOf("1.3")));
    for (const auto& shown : service->shown) {
        EXPECT_EQ(shown.actions, Texts());
        EXPECT_EQ(shown.body, "You have 1.2.");
    }
}

TEST_F(DesktopNotificationTest, TextIsEscapedForAServiceThatReadsMarkupAndRepairedForAll) {
    startService({"body-markup"});
    EXPECT_TRUE(show({.title = "a\xFF<b>", .body = "1 < 2 & \xC0<a href='x'>"}));
    EXPECT_EQ(service->shown.at(0).title, "a\uFFFD<b>");
    EXPECT_EQ(service->shown.at(0).body, "1 &lt; 2 &amp; \uFFFD&lt;a href=&apos;x&apos;&gt;");
}

TEST_F(DesktopNotificationTest, TheButtonAndTheNotificationItselfOpenExactlyTheAddressWithTheDesktopsToken) {
    startService();
    for (const auto* key : {"open", "default"}) {
        EXPECT_TRUE(show(newsOf("1.3")));
        service->giveActivationToken(service->shown.size() - 1, "token-5");
        service->invoke(service->shown.size() - 1, key);
        expectOpened("appstream:1.3?a=1&b=%20 token-5");
    }
    service->invoke(1, "open");
    expectOpened("appstream:1.3?a=1&b=%20 ");
}

TEST_F(DesktopNotificationTest, NothingElseOpensAnything) {
    startService();
    EXPECT_TRUE(show(newsOf("1.3")));
    service->invoke(0, "other-key");
    service->invoke(1, "open");
    service->send("ActionInvoked", g_variant_new("(u)", 71U));
    service->send("ActionInvoked", g_variant_new("(su)", "open", 71U));
    service->send("ActivationToken", g_variant_new("(uu)", 71U, 1U));
    service->send("NotificationClosed", g_variant_new("(s)", "71"));
    const auto stranger = TestBus::instance().connect();
    g_dbus_connection_emit_signal(stranger.get(), nullptr, "/org/freedesktop/Notifications",
                                  "org.freedesktop.Notifications", "ActivationToken",
                                  g_variant_new("(us)", 71U, "a stranger's"), nullptr);
    settle(stranger.get());
    service->invoke(0, "open");
    expectOpened("appstream:1.3?a=1&b=%20 ");
}

TEST_F(DesktopNotificationTest, AClosedNotificationIsOver) {
    startService();
    EXPECT_TRUE(show(newsOf("1.3")));
    service->close(0);
    service->invoke(0, "open");
    EXPECT_TRUE(show(newsOf("1.4")));
    EXPECT_EQ(service->shown.at(1).replaces, 0U);
    service->invoke(1, "open");
    expectOpened("appstream:1.4?a=1&b=%20 ");
}

TEST_F(DesktopNotificationTest, ANoticeTakesThePlaceAndTheButtonOfTheOneBefore) {
    startService();
    EXPECT_TRUE(show(newsOf("1.3")));
    EXPECT_TRUE(show(answer));
    EXPECT_EQ(service->shown.at(1).replaces, 71U);
    service->invoke(1, "open");
    EXPECT_TRUE(show(newsOf("1.4")));
    EXPECT_EQ(service->shown.at(2).replaces, 72U);
    service->invoke(0, "open");
    service->invoke(2, "open");
    expectOpened("appstream:1.4?a=1&b=%20 ");
}

TEST_F(DesktopNotificationTest, TheNewestOfTwoAtOnceIsShown) {
    startService();
    notification.show(newsOf("1.3"), [](bool) { ADD_FAILURE() << "the first was overtaken"; });
    EXPECT_TRUE(show(answer));
    EXPECT_EQ(service->shown.size(), 1U);
    EXPECT_EQ(service->shown.at(0).title, answer.title);
}

TEST_F(DesktopNotificationTest, WhoeverAsksHearsWhetherItWasShown) {
    EXPECT_FALSE(show(newsOf("1.3")));
    startService();
    service->refuses = true;
    EXPECT_FALSE(show(newsOf("1.3")));
    service->refuses = false;
    EXPECT_TRUE(show(newsOf("1.3")));
    std::optional<bool> wasShown;
    DesktopNotification(nullptr, log).show(answer, [&wasShown](bool shown) { wasShown = shown; });
    EXPECT_EQ(wasShown, false);
    notification.show(answer, {});
    EXPECT_TRUE(runUntil([this] { return service->shown.size() == 2; }));
    settle(service->connection());
}

}  // namespace
}  // namespace thermopix
