#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

/// A notification service on the test bus, on a connection of its own; it records what it is asked to show.
class FakeNotificationService {
public:
    struct Notification {
        std::string application;
        std::uint32_t replaces = 0;
        std::string icon;
        std::string title;
        std::string body;
        /// Keys and labels in turn.
        std::vector<std::string> actions;
        std::string desktopEntry;
        bool isTransient = false;
        std::int32_t timeout = 0;
    };

    explicit FakeNotificationService(std::vector<std::string> serviceCapabilities);
    ~FakeNotificationService();
    FakeNotificationService(const FakeNotificationService&) = delete;
    FakeNotificationService& operator=(const FakeNotificationService&) = delete;

    /// What the user does with the notification that was shown `index`th, from 0.
    void giveActivationToken(std::size_t index, const std::string& token);
    void invoke(std::size_t index, const std::string& key);
    void close(std::size_t index);
    /// Sends any signal of the interface.
    void send(const char* name, GVariant* parameters);

    [[nodiscard]] GDBusConnection* connection() const { return connection_.get(); }

    std::vector<Notification> shown;
    std::vector<std::string> capabilities;
    /// Answers to Notify are an error.
    bool refuses = false;

private:
    void answer(const char* method, GVariant* parameters, GDBusMethodInvocation* invocation);

    GObjectHandle<GDBusConnection> connection_;
    GNodeInfoHandle description_;
};

}  // namespace thermopix
