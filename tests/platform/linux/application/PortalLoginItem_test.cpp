#include "platform/linux/application/PortalLoginItem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fakes/MemoryUserDefaults.h"
#include "fakes/RecordingNotices.h"
#include "platform/linux/tray/TestBus.h"

namespace thermopix {
namespace {

using Texts = std::vector<std::string>;

/// The Background portal of a desktop, on a connection of its own: it notes what it is asked and answers when told.
class FakePortal {
public:
    struct Question {
        std::string request;
        bool autostart = false;
        std::string sender;
    };

    FakePortal() {
        static constexpr const char* interface = R"(
<node><interface name="org.freedesktop.portal.Background"><method name="RequestBackground">
  <arg type="s" direction="in"/><arg type="a{sv}" direction="in"/><arg type="o" direction="out"/>
</method></interface></node>)";
        static constexpr GDBusInterfaceVTable calls{&FakePortal::take, nullptr, nullptr, {}};
        description_.reset(g_dbus_node_info_new_for_xml(interface, nullptr));
        g_dbus_connection_register_object(connection_.get(), "/org/freedesktop/portal/desktop",
                                          description_->interfaces[0], &calls, this, nullptr, nullptr);
        takeName(connection_.get(), "org.freedesktop.portal.Desktop");
    }
    ~FakePortal() { disconnect(std::move(connection_)); }
    FakePortal(const FakePortal&) = delete;
    FakePortal& operator=(const FakePortal&) = delete;

    /// Ends the `index`th question, from 0.
    void respond(std::size_t index, guint32 end, std::optional<bool> autostart) {
        GVariantBuilder results;
        g_variant_builder_init(&results, G_VARIANT_TYPE_VARDICT);
        if (autostart) {
            g_variant_builder_add(&results, "{sv}", "autostart", g_variant_new_boolean(*autostart ? TRUE : FALSE));
        }
        send(index, g_variant_new("(ua{sv})", end, &results));
    }
    void send(std::size_t index, GVariant* response) {
        const auto& question = questions.at(index);
        g_dbus_connection_emit_signal(connection_.get(), question.sender.c_str(), question.request.c_str(),
                                      "org.freedesktop.portal.Request", "Response", response, nullptr);
        settle(connection_.get());
    }

    std::vector<Question> questions;

private:
    static void take(GDBusConnection* /*bus*/, const char* sender, const char* /*path*/, const char* /*interface*/,
                     const char* /*method*/, GVariant* parameters, GDBusMethodInvocation* invocation, gpointer self) {
        const GVariantHandle options(g_variant_get_child_value(parameters, 1));
        const char* token = nullptr;
        gboolean autostart = FALSE;
        g_variant_lookup(options.get(), "handle_token", "&s", &token);
        g_variant_lookup(options.get(), "autostart", "b", &autostart);
        std::string name = sender + 1;
        std::replace(name.begin(), name.end(), '.', '_');
        const std::string request = "/org/freedesktop/portal/desktop/request/" + name + "/" + token;
        static_cast<FakePortal*>(self)->questions.push_back({request, autostart != FALSE, sender});
        g_dbus_method_invocation_return_value(invocation, g_variant_new("(o)", request.c_str()));
    }

    GObjectHandle<GDBusConnection> connection_ = TestBus::instance().connect();
    GNodeInfoHandle description_;
};

class PortalLoginItemTest : public testing::Test {
protected:
    PortalLoginItemTest() { start(); }

    /// As a start of the program does.
    void start(GDBusConnection* bus = TestBus::instance().session()) {
        item = std::make_unique<PortalLoginItem>(bus, memory, notices);
        item->onAnswer = [this] { ++answers; };
    }

    /// Asks, and waits until the portal has the question.
    void ask(bool enabled) {
        const auto count = portal->questions.size() + 1;
        EXPECT_EQ(item->setEnabled(enabled), std::nullopt);
        EXPECT_TRUE(runUntil([&] { return portal->questions.size() == count; }));
        EXPECT_EQ(portal->questions.back().autostart, enabled);
        EXPECT_EQ(answers, 0) << "nothing is answered yet";
    }
    void awaitAnswer() {
        EXPECT_TRUE(runUntil([&] { return answers == 1; }));
        answers = 0;
    }

    std::shared_ptr<MemoryUserDefaults> memory = std::make_shared<MemoryUserDefaults>();
    RecordingNotices notices;
    std::unique_ptr<FakePortal> portal = std::make_unique<FakePortal>();
    std::unique_ptr<PortalLoginItem> item;
    int answers = 0;
};

TEST_F(PortalLoginItemTest, IsOnOrOffWhenThePortalHasAnsweredAndAfterARestart) {
    EXPECT_FALSE(item->isEnabled());
    std::size_t question = 0;
    for (const bool enabled : {true, false}) {
        ask(enabled);
        EXPECT_EQ(item->isEnabled(), !enabled);
        portal->respond(question++, 0, enabled);
        awaitAnswer();
        EXPECT_EQ(item->isEnabled(), enabled);
        start();
        EXPECT_EQ(item->isEnabled(), enabled);
    }
    EXPECT_EQ(notices.shown, std::vector<UserNotice>{});
}

TEST_F(PortalLoginItemTest, StaysAsItIsWhenTheUserSaysNo) {
    ask(true);
    portal->respond(0, 1, std::nullopt);
    awaitAnswer();
    EXPECT_FALSE(item->isEnabled());
    EXPECT_EQ(notices.shown, std::vector<UserNotice>{}) << "the user knows";
}

TEST_F(PortalLoginItemTest, SaysSoWhenTheDesktopRefuses) {
    ask(true);
    portal->respond(0, 0, false);
    awaitAnswer();
    ask(true);
    portal->respond(1, 2, std::nullopt);
    awaitAnswer();
    EXPECT_FALSE(item->isEnabled());
    ASSERT_EQ(notices.shown.size(), 2U);
    EXPECT_EQ(notices.shown.back().body, "The desktop did not allow it.");
}

TEST_F(PortalLoginItemTest, SaysSoWhereThereIsNoPortal) {
    portal.reset();
    EXPECT_EQ(item->setEnabled(true), std::nullopt);
    awaitAnswer();
    EXPECT_FALSE(item->isEnabled());
    ASSERT_EQ(notices.shown.size(), 1U);
    EXPECT_EQ(notices.shown.back().body, "No portal of this desktop answers.");
}

TEST_F(PortalLoginItemTest, IsUnavailableWithoutABus) {
    start(nullptr);
    ASSERT_TRUE(item->setEnabled(true).has_value());
    EXPECT_FALSE(item->isEnabled());
    EXPECT_EQ(item->setEnabled(false), std::nullopt);
}

TEST_F(PortalLoginItemTest, AsksOnceForWhatIsAskedForAlready) {
    ask(true);
    EXPECT_EQ(item->setEnabled(true), std::nullopt);
    settle(TestBus::instance().session());
    EXPECT_EQ(portal->questions.size(), 1U);
}

TEST_F(PortalLoginItemTest, ALaterQuestionTakesThePlaceOfAnEarlier) {
    ask(true);
    ask(false);
    portal->respond(0, 0, true);
    EXPECT_EQ(answers, 0);
    portal->respond(1, 0, false);
    awaitAnswer();
    EXPECT_FALSE(item->isEnabled());
}

TEST_F(PortalLoginItemTest, ResponsesThatSayNothingAreNoAnswer) {
    ask(true);
    portal->send(0, g_variant_new("(s)", "on"));
    EXPECT_EQ(answers, 0);
    portal->respond(0, 0, std::nullopt);
    awaitAnswer();
    EXPECT_FALSE(item->isEnabled());
    ASSERT_EQ(notices.shown.size(), 1U);
}

TEST_F(PortalLoginItemTest, APortalThatNeverAnswersLeavesItAsItWas) {
    ask(true);
    item.reset();
    portal->respond(0, 0, true);
    EXPECT_EQ(answers, 0);
    EXPECT_EQ(memory->values.size(), 0U);
}

}  // namespace
}  // namespace thermopix
