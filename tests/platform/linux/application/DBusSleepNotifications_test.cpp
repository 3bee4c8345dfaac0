#include "platform/linux/application/DBusSleepNotifications.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fakes/ManualMainLoop.h"
#include "platform/linux/tray/TestBus.h"

namespace thermopix {
namespace {

using namespace std::chrono_literals;
using Told = std::vector<std::string>;

constexpr const char* login = "org.freedesktop.login1";
constexpr std::array savers{"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver", "org.cinnamon.ScreenSaver",
                            "org.mate.ScreenSaver", "org.xfce.ScreenSaver"};

/// A process on the bus, which may own the name of a service and says what that would.
class Speaker {
public:
    Speaker() : connection_(TestBus::instance().connect()) {}
    explicit Speaker(const char* name) : Speaker() { takeName(connection_.get(), name); }

    void say(const std::string& service, GVariant* parameters, const char* destination = nullptr) const {
        const bool isLogin = service == login;
        GErrorSlot error;
        g_dbus_connection_emit_signal(connection_.get(), destination,
                                      isLogin ? "/org/freedesktop/login1" : "/ScreenSaver",
                                      isLogin ? "org.freedesktop.login1.Manager" : service.c_str(),
                                      isLogin ? "PrepareForSleep" : "ActiveChanged", parameters, error.out());
        g_dbus_connection_flush_sync(connection_.get(), nullptr, nullptr);
        EXPECT_EQ(error.message(), "");
    }
    void say(const std::string& service, bool sleeps, const char* destination = nullptr) const {
        say(service, g_variant_new("(b)", sleeps ? TRUE : FALSE), destination);
    }

    void die() { disconnect(std::move(connection_)); }

    [[nodiscard]] GDBusConnection* connection() const { return connection_.get(); }

private:
    GObjectHandle<GDBusConnection> connection_;
};

class DBusSleepNotificationsTest : public testing::Test {
protected:
    DBusSleepNotificationsTest() : session_(TestBus::instance().session()) {
        // One daemon is both buses.
        g_setenv("DBUS_SYSTEM_BUS_ADDRESS", g_getenv("DBUS_SESSION_BUS_ADDRESS"), TRUE);
        listen(session_);
    }

    void listen(GDBusConnection* session) {
        subscriptions_.clear();
        notifications_.emplace(session, loop_);
        for (const auto& [notification, word] : {std::pair{SleepNotification::willSleep, "will sleep"},
                                                 {SleepNotification::didWake, "did wake"},
                                                 {SleepNotification::screensDidSleep, "screens did sleep"},
                                                 {SleepNotification::screensDidWake, "screens did wake"}}) {
            subscriptions_.push_back(
                notifications_->observe(notification, [this, word = std::string(word)] { told_.push_back(word); }));
        }
        heed();
    }

    /// Waits until all that was said has arrived on both connections.
    static void heed() {
        const GObjectHandle<GDBusConnection> system(g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr));
        ASSERT_TRUE(system);
        for (GDBusConnection* bus : {system.get(), TestBus::instance().session()}) {
            for (int round = 0; round < 3; ++round) {
                static_cast<void>(callFrom(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                           "GetId", nullptr));
            }
        }
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
    }

    [[nodiscard]] Told told() {
        heed();
        return std::exchange(told_, {});
    }
    [[nodiscard]] bool tells(const std::string& word) {
        return runUntil([&] { return !told_.empty(); }) && told() == Told{word};
    }

    GDBusConnection* session_;
    ManualMainLoop loop_;
    std::optional<DBusSleepNotifications> notifications_;
    Told told_;
    std::vector<Subscription> subscriptions_;
};

TEST_F(DBusSleepNotificationsTest, TellsOfTheMachineAndOfTheDisplaysUnderEveryName) {
    const Speaker machine(login);
    machine.say(login, true);
    EXPECT_TRUE(tells("will sleep"));
    machine.say(login, false);
    EXPECT_TRUE(tells("did wake"));
    for (const char* name : savers) {
        const Speaker saver(name);
        saver.say(name, true);
        EXPECT_TRUE(tells("screens did sleep")) << name;
        saver.say(name, false);
        EXPECT_TRUE(tells("screens did wake")) << name;
    }
}

TEST_F(DBusSleepNotificationsTest, AServiceThatDiesAsleepCountsAsAwake) {
    Speaker machine(login);
    machine.say(login, true);
    EXPECT_TRUE(tells("will sleep"));
    machine.die();
    EXPECT_TRUE(tells("did wake"));
    for (const char* name : savers) {
        Speaker saver(name);
        saver.say(name, true);
        EXPECT_TRUE(tells("screens did sleep")) << name;
        saver.die();
        EXPECT_TRUE(tells("screens did wake")) << name;
    }
}

TEST_F(DBusSleepNotificationsTest, AServiceThatDiesWithItsLastWordsCountsAsAwake) {
    Speaker saver(savers[1]);
    saver.say(savers[1], true);
    saver.die();
    Speaker next(savers[1]);
    EXPECT_TRUE(runUntil([&] { return told_.size() >= 2; }));
    EXPECT_EQ(told(), (Told{"screens did sleep", "screens did wake"}));
}

TEST_F(DBusSleepNotificationsTest, ADeathInAWakefulStateTellsNothing) {
    Speaker saver(savers[0]);
    saver.say(savers[0], true);
    saver.say(savers[0], false);
    EXPECT_EQ(told(), (Told{"screens did sleep", "screens did wake"}));
    saver.die();
    EXPECT_EQ(told(), Told{});
}

TEST_F(DBusSleepNotificationsTest, AServiceThatWasStartedAnewIsHeard) {
    for (const char* name : {login, savers[0]}) {
        const bool isLogin = name == login;
        for (int start = 0; start < 3; ++start) {
            Speaker speaker(name);
            speaker.say(name, true);
            EXPECT_TRUE(tells(isLogin ? "will sleep" : "screens did sleep"));
            speaker.die();
            EXPECT_TRUE(tells(isLogin ? "did wake" : "screens did wake"));
        }
    }
}

TEST_F(DBusSleepNotificationsTest, ASuccessorInOneStepCountsAsAwake) {
    constexpr guint32 allowReplacement = 1;
    constexpr guint32 replaceExisting = 2;
    const Speaker first;
    const Speaker second;
    const auto request = [](const Speaker& speaker, guint32 flags) {
        static_cast<void>(callFrom(speaker.connection(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                   "org.freedesktop.DBus", "RequestName", g_variant_new("(su)", savers[2], flags)));
    };
    request(first, allowReplacement);
    first.say(savers[2], true);
    EXPECT_TRUE(tells("screens did sleep"));
    request(second, replaceExisting);
    EXPECT_TRUE(tells("screens did wake"));
    // The first one stands in line and has nothing to say any more.
    first.say(savers[2], true);
    EXPECT_EQ(told(), Told{});
}

TEST_F(DBusSleepNotificationsTest, WhoDoesNotOwnTheNameIsNotBelieved) {
    const Speaker machine(login);
    const Speaker saver(savers[0]);
    const Speaker stranger;
    for (const char* name : {login, savers[0], savers[3]}) {
        stranger.say(name, true);
        stranger.say(name, true, g_dbus_connection_get_unique_name(session_));
    }
    EXPECT_EQ(told(), Told{});
}

TEST_F(DBusSleepNotificationsTest, ASignalOfAnotherTypeMeansNothing) {
    const Speaker saver(savers[4]);
    saver.say(savers[4], g_variant_new("(s)", "true"));
    saver.say(savers[4], nullptr);
    saver.say(savers[4], g_variant_new("(bb)", TRUE, TRUE));
    EXPECT_EQ(told(), Told{});
}

TEST_F(DBusSleepNotificationsTest, AMachineThatRunsOnForAMinuteIsAwake) {
    const Speaker machine(login);
    machine.say(login, true);
    EXPECT_TRUE(tells("will sleep"));
    loop_.advance(59s);
    EXPECT_EQ(told(), Told{});
    loop_.advance(1s);
    EXPECT_EQ(told(), Told{"did wake"});
    loop_.advance(1h);
    EXPECT_EQ(told(), Told{});
}

TEST_F(DBusSleepNotificationsTest, DisplaysMaySleepForAsLongAsTheyLike) {
    const Speaker saver(savers[0]);
    saver.say(savers[0], true);
    EXPECT_TRUE(tells("screens did sleep"));
    loop_.advance(24h);
    EXPECT_EQ(told(), Told{});
    EXPECT_TRUE(loop_.scheduled.empty());
}

TEST_F(DBusSleepNotificationsTest, WithoutASessionBusOnlyTheMachineCounts) {
    listen(nullptr);
    const Speaker saver(savers[0]);
    const Speaker machine(login);
    saver.say(savers[0], true);
    machine.say(login, true);
    EXPECT_TRUE(tells("will sleep"));
}

}  // namespace
}  // namespace thermopix
