#include "program/FeedServer.h"

#include <fmt/core.h>
#include <gio/gio.h>

#include <array>
#include <stdexcept>
#include <string_view>

namespace thermopix {

FeedServer::FeedServer() : service_(g_socket_service_new()) {
    const GObjectHandle<GInetAddress> thisMachine(g_inet_address_new_loopback(G_SOCKET_FAMILY_IPV4));
    const GObjectHandle<GSocketAddress> anyPort(g_inet_socket_address_new(thisMachine.get(), 0));
    GSocketAddress* taken = nullptr;
    if (g_socket_listener_add_address(G_SOCKET_LISTENER(service_.get()), anyPort.get(), G_SOCKET_TYPE_STREAM,
                                      G_SOCKET_PROTOCOL_TCP, nullptr, &taken, nullptr) == FALSE) {
        throw std::runtime_error("no port for the server of the feed");
    }
    const GObjectHandle<GSocketAddress> address(taken);
    port_ = g_inet_socket_address_get_port(G_INET_SOCKET_ADDRESS(taken));
    g_signal_connect(service_.get(), "incoming",
                     G_CALLBACK(+[](GSocketService*, GSocketConnection* connection, GObject*, gpointer self) {
                         static_cast<FeedServer*>(self)->answer(connection);
                         return TRUE;
                     }),
                     this);
}

FeedServer::~FeedServer() {
    g_socket_service_stop(service_.get());
    g_socket_listener_close(G_SOCKET_LISTENER(service_.get()));
}

std::string FeedServer::feed() const {
    return fmt::format("http://127.0.0.1:{}/releases.xml", port_);
}

void FeedServer::offer(const std::string& version) {
    const auto document = fmt::format(
        R"(<rss version="2.0"><channel><link>https://example.org</link><item>
        <enclosure url="https://example.org/thermopix.tar.xz" xmlns:u="http://www.andymatuschak.org/xml-namespaces/sparkle"
            u:version="{}"/></item></channel></rss>)",
        version);
    response_ =
        fmt::format("HTTP/1.1 200 OK\r\nContent-Length: {}\r\nConnection: close\r\n\r\n{}", document.size(), document);
}

void FeedServer::answer(GSocketConnection* connection) {
    std::string request;
    std::array<char, 4096> buffer{};
    auto* const input = g_io_stream_get_input_stream(G_IO_STREAM(connection));
    while (request.find("\r\n\r\n") == std::string::npos) {
        const auto count = g_input_stream_read(input, buffer.data(), buffer.size(), nullptr, nullptr);
        if (count <= 0) {
            return;
        }
        request.append(buffer.data(), static_cast<std::size_t>(count));
    }
    requests.push_back(request.substr(0, request.find("\r\n")));
    g_output_stream_write_all(g_io_stream_get_output_stream(G_IO_STREAM(connection)), response_.data(),
                              response_.size(), nullptr, nullptr, nullptr);
    g_io_stream_close(G_IO_STREAM(connection), nullptr, nullptr);
}

}  // namespace thermopix
