#include "platform/qt/MessageSocket.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>
#include <utility>

#include "messages/MessageCodec.h"
#include "messages/WindowProtocol.h"

namespace thermopix {

MessageSocket::MessageSocket(int descriptor)
    : descriptor_(descriptor),
      notifier_(descriptor, QSocketNotifier::Read),
      lines_(WindowProtocol::maximumRequestBytes) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { receive(); });
}

MessageSocket::~MessageSocket() {
    flush();
    notifier_.setEnabled(false);
    close(descriptor_);
}

void MessageSocket::send(const WindowEvent& event) {
    if (unsent_.empty()) {
        QMetaObject::invokeMethod(
            &notifier_, [this] { flush(); }, Qt::QueuedConnection);
    }
    unsent_ += MessageCodec::line(event) + '\n';
}

void MessageSocket::flush() {
    const std::string bytes = std::exchange(unsent_, {});
    std::string_view rest = bytes;
    while (!rest.empty()) {
        const ssize_t sent = ::send(descriptor_, rest.data(), rest.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR) {
            return;  // The end of the socket is heard when reading.
        }
        rest.remove_prefix(sent < 0 ? 0 : static_cast<std::size_t>(sent));
    }
}

void MessageSocket::receive() {
    std::array<char, std::size_t{64} * 1024> bytes{};
    const ssize_t received = recv(descriptor_, bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (received > 0) {
        lines_.append({bytes.data(), static_cast<std::size_t>(received)});
        takeLines();
    } else if (received == 0 || (errno != EAGAIN && errno != EINTR)) {
        notifier_.setEnabled(false);
        onEnd();
    }
}

void MessageSocket::takeLines() {
    while (notifier_.isEnabled()) {
        const auto line = lines_.takeLine();
        const auto request = line ? MessageCodec::request(*line) : std::nullopt;
        if (request) {
            onRequest(*request);
        } else if (line || lines_.hasFailed()) {
            notifier_.setEnabled(false);
            onMalformed();
        } else {
            return;
        }
    }
}

}  // namespace thermopix
