#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

/// A session bus of the test process alone, on which nothing is started on demand.
class TestBus {
public:
    static TestBus& instance();

    /// The shared connection that the code under test uses.
    [[nodiscard]] GDBusConnection* session() const { return session_.get(); }

    /// Another connection, as if of another process.
    [[nodiscard]] GObjectHandle<GDBusConnection> connect() const;

    /// How many messages the code under test has sent.
    [[nodiscard]] std::int64_t sentMessages() const;

    TestBus(const TestBus&) = delete;
    TestBus& operator=(const TestBus&) = delete;

private:
    TestBus();
    ~TestBus();

    GObjectHandle<GTestDBus> daemon_;
    GObjectHandle<GDBusConnection> session_;
    std::atomic<std::int64_t> sentMessages_ = 0;
};

/// Serves the default main context until the condition holds; false when it does not within a generous time.
[[nodiscard]] bool runUntil(const std::function<bool()>& condition);

/// Serves everything that is on its way to or from the connection.
void settle(GDBusConnection* connection);

/// Calls a method from `caller` while the main context is served; the reply, or null and the name of the error.
struct TestReply {
    GVariantHandle value;
    std::string error;
};
[[nodiscard]] TestReply callFrom(GDBusConnection* caller, const std::string& busName, const std::string& objectPath,
                                 const char* interfaceName, const char* method, GVariant* parameters);

/// Owns the name for the connection until that closes.
void takeName(GDBusConnection* connection, const char* busName);

/// Closes the connection and waits until the bus has noticed.
void disconnect(GObjectHandle<GDBusConnection> connection);

}  // namespace thermopix
