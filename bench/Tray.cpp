// thermopix_bench_tray: a session bus with a tray on it, and a system bus with a login manager, for one measured
// program. Prints the addresses of both. Then it prints, on lines of their own, when an item registered and that its
// picture could be read; times are microseconds of the monotonic clock. It understands these lines of standard input
// and ends with its end:
//   messages    how many messages of others have crossed the session bus, and how many of each kind
//   sleep, wake tells the system bus
//   activate    opens the measured program again, and says when

#include <glib-unix.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <map>
#include <mutex>
#include <sstream>
#include <string>
#include <string_view>

#include "environment/AppInfo.h"
#include "platform/linux/tray/TestBus.h"
#include "platform/linux/tray/TestTrayHost.h"

namespace {

using namespace thermopix;

void say(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

std::string addressIn(const char* variable) {
    const char* const address = g_getenv(variable);
    return address == nullptr ? "" : address;
}

/// Sees every message on the session bus.
class Monitor {
public:
    Monitor() : connection_(TestBus::instance().connect()) {
        g_dbus_connection_add_filter(
            connection_.get(),
            [](GDBusConnection*, GDBusMessage* message, gboolean isIncoming, gpointer self) -> GDBusMessage* {
                if (isIncoming == FALSE || !static_cast<Monitor*>(self)->isWatching_) {
                    return message;
                }
                static_cast<Monitor*>(self)->count(message);
                g_object_unref(message);
                return nullptr;
            },
            this, nullptr);
        const auto reply =
            callFrom(connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                     "org.freedesktop.DBus.Monitoring", "BecomeMonitor", g_variant_new("(asu)", nullptr, 0U));
        isWatching_ = reply.error.empty();
    }

    [[nodiscard]] std::string report() {
        const std::lock_guard lock(mutex_);
        std::ostringstream text;
        text << "messages " << total_;
        for (const auto& [kind, count] : kinds_) {
            text << ' ' << kind << '=' << count;
        }
        return text.str();
    }

private:
    /// In the connection's own thread.
    void count(GDBusMessage* message) {
        const std::lock_guard lock(mutex_);
        ++total_;
        const char* const member = g_dbus_message_get_member(message);
        ++kinds_[member == nullptr ? "reply" : member];
    }

    GObjectHandle<GDBusConnection> connection_;
    std::mutex mutex_;
    std::atomic<bool> isWatching_ = false;
    long total_ = 0;
    std::map<std::string, long> kinds_;
};

/// The system bus, and who announces there that the machine goes to sleep.
class LoginManager {
public:
    LoginManager() : daemon_(g_test_dbus_new(G_TEST_DBUS_NONE)) {
        g_test_dbus_up(daemon_.get());
        connection_.reset(g_dbus_connection_new_for_address_sync(
            address().c_str(),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr));
        takeName(connection_.get(), "org.freedesktop.login1");
    }
    ~LoginManager() {
        connection_.reset();
        g_test_dbus_stop(daemon_.get());
    }
    LoginManager(const LoginManager&) = delete;
    LoginManager& operator=(const LoginManager&) = delete;

    [[nodiscard]] std::string address() const { return g_test_dbus_get_bus_address(daemon_.get()); }

    void announce(bool sleeps) {
        g_dbus_connection_emit_signal(connection_.get(), nullptr, "/org/freedesktop/login1",
                                      "org.freedesktop.login1.Manager", "PrepareForSleep",
                                      g_variant_new("(b)", sleeps ? TRUE : FALSE), nullptr);
    }

private:
    GObjectHandle<GTestDBus> daemon_;
    GObjectHandle<GDBusConnection> connection_;
};

/// The lines of standard input as they come.
class Commands {
public:
    Commands() {
        g_unix_fd_add(
            STDIN_FILENO, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP),
            [](gint, GIOCondition, gpointer self) { return static_cast<Commands*>(self)->read(); }, this);
    }

    bool isAtEnd = false;

    /// The next line; empty when none has come.
    std::string take() {
        const auto end = text_.find('\n');
        if (end == std::string::npos) {
            return "";
        }
        const std::string line = text_.substr(0, end);
        text_.erase(0, end + 1);
        return line;
    }

private:
    gboolean read() {
        std::array<char, 256> buffer;
        const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count <= 0) {
            isAtEnd = true;
            return G_SOURCE_REMOVE;
        }
        text_.append(buffer.data(), static_cast<std::size_t>(count));
        return G_SOURCE_CONTINUE;
    }

    std::string text_;
};

void activate() {
    const std::string name(AppInfo::identifier);
    std::string path = "/" + name;
    std::replace(path.begin(), path.end(), '.', '/');
    static const auto connection = TestBus::instance().connect();
    const auto reply = callFrom(connection.get(), name, path, "org.freedesktop.Application", "Activate",
                                g_variant_new("(a{sv})", nullptr));
    if (!reply.error.empty()) {
        say("not activated: " + reply.error);
    }
}

}  // namespace

int main() {
    TestTrayHost tray;
    const std::string session = addressIn("DBUS_SESSION_BUS_ADDRESS");
    LoginManager loginManager;
    Monitor monitor;
    Commands commands;
    say("session " + session);
    say("system " + loginManager.address());

    for (std::size_t shown = 0; !commands.isAtEnd;) {
        g_main_context_iteration(nullptr, TRUE);
        for (; shown < tray.registrations.size(); ++shown) {
            say("registered " + std::to_string(g_get_monotonic_time()));
            const auto pictures = tray.pictures();
            say(pictures.empty() ? "no picture" : "picture " + std::to_string(g_get_monotonic_time()));
        }
        for (std::string command = commands.take(); !command.empty(); command = commands.take()) {
            if (command == "messages") {
                say(monitor.report());
            } else if (command == "sleep" || command == "wake") {
                loginManager.announce(command == "sleep");
            } else if (command == "activate") {
                say("activated " + std::to_string(g_get_monotonic_time()));
                activate();
            }
        }
    }
}
