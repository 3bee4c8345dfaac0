#pragma once

#include <filesystem>
#include <string>

#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

/// A server of the test process on this machine, over HTTP and HTTPS; its paths and what is wrong with each are in
/// misbehaving_server.py.
class MisbehavingServer {
public:
    static MisbehavingServer& instance();

    /// Addresses of a path: over HTTP; over HTTPS with a certificate for 127.0.0.1, for another host, and one that is
    /// no longer valid.
    [[nodiscard]] std::string http(const std::string& path) const;
    [[nodiscard]] std::string https(const std::string& path) const;
    [[nodiscard]] std::string httpsOfAnotherHost(const std::string& path) const;
    [[nodiscard]] std::string httpsExpired(const std::string& path) const;

    /// The file of the certificates, all of which are their own authority.
    [[nodiscard]] std::string authorities() const;

    MisbehavingServer(const MisbehavingServer&) = delete;
    MisbehavingServer& operator=(const MisbehavingServer&) = delete;

private:
    MisbehavingServer();
    ~MisbehavingServer();

    std::filesystem::path folder_;
    GObjectHandle<GSubprocess> process_;
    int httpPort_ = 0;
    int httpsPort_ = 0;
    int otherHostPort_ = 0;
    int expiredPort_ = 0;
};

}  // namespace thermopix
