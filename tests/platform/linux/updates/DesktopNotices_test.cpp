#include "platform/linux/updates/DesktopNotices.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "FakeNotificationService.h"
#include "platform/linux/tray/TestBus.h"

namespace thermopix {
namespace {

using Texts = std::vector<std::string>;

const UpdateNotice answer{.title = "You're up to date", .body = "1 < 2 & so on"};

UpdateNotice newsOf(const std::string& version) {
    return {.title = version + " is available",
            .body = "You have 1.2.",
            .button = UpdateNotice::Button{"Show Release", "https://example.org/?v=" + version + "&x=1"},
            .isNews = true};
}

class DesktopNoticesTest : public ::testing::Test {
protected:
    void startService(Texts capabilities = {"actions", "body"}) {
        service = std::make_unique<FakeNotificationService>(std::move(capabilities));
    }

    /// Whether the desktop took the notice.
    bool show(const UpdateNotice& notice) {
        std::optional<bool> wasShown;
        notices.show(notice, [&wasShown](bool shown) { wasShown = shown; });
        EXPECT_TRUE(runUntil([&wasShown] { return wasShown.has_value(); }));
        if (service) {
            settle(service->connection());
        }
        return wasShown.value_or(false);
    }

    std::unique_ptr<FakeNotificationService> service;
    Texts opened;
    DesktopNotices notices{TestBus::instance().session(), [this](const std::string& page, const std::string& token) {
                               opened.push_back(token.empty() ? page : page + " with " + token);
                           }};
};

TEST_F(DesktopNoticesTest, anAnswerIsATransientNotificationOfThisProgram) {
    startService();
    EXPECT_TRUE(show(answer));
    ASSERT_EQ(service->shown.size(), 1U);
    const auto& shown = service->shown[0];
    EXPECT_EQ(shown.application, "Thermopix");
    EXPECT_EQ(shown.icon, "io.github.thermopix.Thermopix");
    EXPECT_EQ(shown.desktopEntry, "io.github.thermopix.Thermopix");
    EXPECT_EQ(shown.title, "You're up to date");
    EXPECT_EQ(shown.body, "1 < 2 & so on");
    EXPECT_EQ(shown.actions, Texts());
    EXPECT_EQ(shown.urgency, 1);
    EXPECT_TRUE(shown.isTransient);
    EXPECT_EQ(shown.timeout, -1);
    EXPECT_EQ(shown.replaces, 0U);
}

TEST_F(DesktopNoticesTest, newsHaveAButtonAndStay) {
    startService();
    EXPECT_TRUE(show(newsOf("1.3")));
    const auto& shown = service->shown.at(0);
    EXPECT_EQ(shown.actions, (Texts{"default", "Show Release", "show-release", "Show Release"}));
    EXPECT_FALSE(shown.isTransient);
    EXPECT_EQ(shown.body, "You have 1.2.");
}

TEST_F(DesktopNoticesTest, criticalNewsAreUrgent) {
    startService();
    auto notice = newsOf("1.3");
    notice.isCritical = true;
    EXPECT_TRUE(show(notice));
    EXPECT_EQ(service->shown.at(0).urgency, 2);
}

TEST_F(DesktopNoticesTest, textIsEscapedForAServiceThatReadsMarkup) {
    startService({"actions", "body", "body-markup"});
    EXPECT_TRUE(show(answer));
    EXPECT_EQ(service->shown.at(0).body, "1 &lt; 2 &amp; so on");
    EXPECT_EQ(service->shown.at(0).title, "You're up to date");
}

TEST_F(DesktopNoticesTest, withoutButtonsTheAddressIsInTheText) {
    startService({"body"});
    EXPECT_TRUE(show(newsOf("1.3")));
    EXPECT_EQ(service->shown.at(0).actions, Texts());
    EXPECT_EQ(service->shown.at(0).body, "You have 1.2.\nhttps://example.org/?v=1.3&x=1");
}

TEST_F(DesktopNoticesTest, theButtonAndTheNotificationItselfOpenExactlyThePage) {
    startService();
    for (const auto* key : {"show-release", "default"}) {
        opened.clear();
        EXPECT_TRUE(show(newsOf("1.3")));
        service->invoke(service->shown.size() - 1, key);
        EXPECT_EQ(opened, Texts{"https://example.org/?v=1.3&x=1"});
    }
}

TEST_F(DesktopNoticesTest, theBrowserGetsTheDesktopsToken) {
    startService();
    EXPECT_TRUE(show(newsOf("1.3")));
    service->giveActivationToken(0, "token-5");
    service->invoke(0, "show-release");
    service->invoke(0, "show-release");
    EXPECT_EQ(opened, (Texts{"https://example.org/?v=1.3&x=1 with token-5", "https://example.org/?v=1.3&x=1"}));
}

TEST_F(DesktopNoticesTest, nothingElseOpensAPage) {
    startService();
    EXPECT_TRUE(show(newsOf("1.3")));
    service->invoke(0, "other-key");
    service->invoke(1, "show-release");
    service->send("ActionInvoked", g_variant_new("(u)", 71U));
    service->send("ActionInvoked", g_variant_new("(su)", "show-release", 71U));
    service->send("ActivationToken", g_variant_new("(uu)", 71U, 1U));
    service->send("NotificationClosed", g_variant_new("(s)", "71"));
    EXPECT_EQ(opened, Texts());
    service->invoke(0, "show-release");
    EXPECT_EQ(opened.size(), 1U);
}

TEST_F(DesktopNoticesTest, anotherProgramCannotPressTheButton) {
    startService();
    EXPECT_TRUE(show(newsOf("1.3")));
    const auto stranger = TestBus::instance().connect();
    g_dbus_connection_emit_signal(stranger.get(), nullptr, "/org/freedesktop/Notifications",
                                  "org.freedesktop.Notifications", "ActionInvoked",
                                  g_variant_new("(us)", 71U, "show-release"), nullptr);
    settle(stranger.get());
    EXPECT_EQ(opened, Texts());
}

TEST_F(DesktopNoticesTest, aClosedNotificationIsOver) {
    startService();
    EXPECT_TRUE(show(newsOf("1.3")));
    service->close(0);
    service->invoke(0, "show-release");
    EXPECT_EQ(opened, Texts());
    EXPECT_TRUE(show(answer));
    EXPECT_EQ(service->shown.at(1).replaces, 0U);
}

TEST_F(DesktopNoticesTest, aNoticeTakesThePlaceOfTheOneBefore) {
    startService();
    EXPECT_TRUE(show(newsOf("1.3")));
    EXPECT_TRUE(show(newsOf("1.4")));
    EXPECT_EQ(service->shown.at(1).replaces, 71U);
    service->invoke(0, "show-release");
    EXPECT_EQ(opened, Texts());
    service->invoke(1, "show-release");
    EXPECT_EQ(opened, Texts{"https://example.org/?v=1.4&x=1"});
}

TEST_F(DesktopNoticesTest, anAnswerAfterNewsHasNoButton) {
    startService();
    EXPECT_TRUE(show(newsOf("1.3")));
    EXPECT_TRUE(show(answer));
    service->invoke(1, "show-release");
    EXPECT_EQ(opened, Texts());
}

TEST_F(DesktopNoticesTest, theNewestOfTwoAtOnceIsShown) {
    startService();
    notices.show(newsOf("1.3"), [](bool) { ADD_FAILURE() << "the first was overtaken"; });
    EXPECT_TRUE(show(answer));
    EXPECT_EQ(service->shown.size(), 1U);
    EXPECT_EQ(service->shown.at(0).title, answer.title);
}

TEST_F(DesktopNoticesTest, aServiceThatRefusesHasNotShownIt) {
    startService();
    service->refuses = true;
    EXPECT_FALSE(show(newsOf("1.3")));
    service->refuses = false;
    EXPECT_TRUE(show(newsOf("1.3")));
}

TEST_F(DesktopNoticesTest, withoutAServiceNothingIsShown) {
    EXPECT_FALSE(show(newsOf("1.3")));
}

TEST_F(DesktopNoticesTest, withoutABusNothingIsShown) {
    DesktopNotices onNoBus(nullptr, nullptr);
    std::optional<bool> wasShown;
    onNoBus.show(answer, [&wasShown](bool shown) { wasShown = shown; });
    EXPECT_EQ(wasShown, false);
}

}  // namespace
}  // namespace thermopix
