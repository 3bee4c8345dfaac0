#pragma once

#include <string>
#include <vector>

#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

/// A web server on this machine that answers every request with the same feed. Served by the default main context.
class FeedServer {
public:
    FeedServer();
    ~FeedServer();
    FeedServer(const FeedServer&) = delete;
    FeedServer& operator=(const FeedServer&) = delete;

    [[nodiscard]] std::string feed() const;

    /// From now on the feed's only release.
    void offer(const std::string& version);
    /// From now on every request is refused.
    void refuse() { response_ = "HTTP/1.1 503 Service Unavailable\r\nContent-Length: 0\r\nConnection: close\r\n\r\n"; }

    /// The first line of every request, in order.
    std::vector<std::string> requests;

private:
    void answer(GSocketConnection* connection);

    GObjectHandle<GSocketService> service_;
    guint16 port_ = 0;
    std::string response_;
};

}  // namespace thermopix
