#include "platform/linux/application/KernelEvents.h"

#include <glib-unix.h>
#include <linux/netlink.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <utility>

namespace thermopix {

namespace {

constexpr std::uint32_t kernelsOwnEvents = 1;
/// The kernel's own limit for the fields of an event.
constexpr std::size_t longestEvent = 2048;

}  // namespace

Descriptor KernelEvents::openSocket() {
    Descriptor socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_KOBJECT_UEVENT));
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = kernelsOwnEvents;
    if (socket && bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        return Descriptor(-1);
    }
    return socket;
}

KernelEvents::KernelEvents(Descriptor socket, std::function<void()> onSensors)
    : socket_(std::move(socket)), onSensors_(std::move(onSensors)) {
    if (!socket_) {
        return;
    }
    source_.reset(g_unix_fd_source_new(socket_.get(), G_IO_IN));
    const GUnixFDSourceFunc ready = [](gint, GIOCondition, gpointer self) -> gboolean {
        static_cast<KernelEvents*>(self)->receive();
        return G_SOURCE_CONTINUE;
    };
    g_source_set_callback(source_.get(), G_SOURCE_FUNC(ready), this, nullptr);
    g_source_attach(source_.get(), nullptr);
}

bool KernelEvents::concernsSensors(std::string_view message) {
    const bool isComingOrGoing = message.starts_with("add@") || message.starts_with("remove@");
    bool isSensor = false;
    while (!message.empty()) {
        const auto field = message.substr(0, message.find('\0'));
        isSensor = isSensor || field == "SUBSYSTEM=hwmon" || field == "SUBSYSTEM=thermal";
        message.remove_prefix(std::min(field.size() + 1, message.size()));
    }
    return isComingOrGoing && isSensor;
}

void KernelEvents::receive() {
    std::array<char, longestEvent + 1> buffer;
    bool concerns = false;
    for (;;) {
        const ssize_t count = recv(socket_.get(), buffer.data(), buffer.size(), 0);
        if (count > 0) {
            concerns = concerns || concernsSensors({buffer.data(), static_cast<std::size_t>(count)});
        } else if (count < 0 && errno == ENOBUFS) {
            concerns = true;  // events were lost
        } else if (count == 0 || errno != EINTR) {
            break;
        }
    }
    if (concerns) {
        onSensors_();
    }
}

}  // namespace thermopix
