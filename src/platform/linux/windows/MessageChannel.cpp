#include "platform/linux/windows/MessageChannel.h"

#include <glib-unix.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <type_traits>
#include <utility>

#include "messages/MessageCodec.h"

namespace thermopix {

namespace {

constexpr std::size_t chunkBytes = 16384;

template <typename Request, typename = void>
constexpr bool namesWindow = false;
template <typename Request>
constexpr bool namesWindow<Request, std::void_t<decltype(Request::window)>> = true;

std::optional<WindowId> windowOf(const WindowRequest& request) {
    return std::visit(
        []<typename Request>(const Request& alternative) -> std::optional<WindowId> {
            if constexpr (namesWindow<Request>) {
                return alternative.window;
            } else {
                return std::nullopt;
            }
        },
        request);
}

bool isOnlyDelay(int error) {
    return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

}  // namespace

MessageChannel::MessageChannel(Descriptor socket, Handlers handlers)
    : socket_(std::move(socket)), handlers_(std::move(handlers)), readable_(watch(G_IO_IN)) {}

GSourceHandle MessageChannel::watch(GIOCondition condition) {
    GSourceHandle source(g_unix_fd_source_new(socket_.get(), condition));
    g_source_set_callback(source.get(), G_SOURCE_FUNC(&MessageChannel::serve), this, nullptr);
    g_source_attach(source.get(), nullptr);
    return source;
}

gboolean MessageChannel::serve(gint /*descriptor*/, GIOCondition condition, gpointer channel) noexcept {
    auto& served = *static_cast<MessageChannel*>(channel);
    if (condition == G_IO_OUT) {
        served.write();
    } else {
        served.read();
    }
    return G_SOURCE_CONTINUE;
}

void MessageChannel::send(const WindowRequest& request) {
    const std::size_t kind = request.index();
    const auto window = windowOf(request);
    std::erase_if(waiting_, [&](const Waiting& other) { return other.kind == kind && other.window == window; });
    waiting_.push_back({kind, window, MessageCodec::line(request) + "\n"});
    if (!writable_ && !hasEnded_) {
        writable_ = watch(G_IO_OUT);
    }
}

std::size_t MessageChannel::roundsTaken() {
    int unread = 0;
    if (isUntaken_ && written_ == outgoing_.size() && ::ioctl(socket_.get(), TIOCOUTQ, &unread) == 0 && unread == 0) {
        isUntaken_ = false;
        ++roundsTaken_;
    }
    return roundsTaken_;
}

void MessageChannel::readRest() {
    const std::weak_ptr<MessageChannel*> self = self_;
    while (!self.expired() && read()) {
    }
}

bool MessageChannel::read() {
    if (hasEnded_) {
        return false;
    }
    std::array<char, chunkBytes> chunk;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the call
    const ssize_t count = ::recv(socket_.get(), chunk.data(), chunk.size(), MSG_DONTWAIT);
    if (count < 0 && isOnlyDelay(errno)) {
        return false;
    }
    // A handler may end this object.
    const std::weak_ptr<MessageChannel*> self = self_;
    const Handlers handlers = handlers_;
    if (count > 0) {
        lines_.append({chunk.data(), static_cast<std::size_t>(count)});
        while (const auto line = lines_.takeLine()) {
            handlers.received(*line);
            if (self.expired()) {
                return false;
            }
        }
        if (!lines_.hasFailed()) {
            return true;
        }
    }
    hasEnded_ = true;
    readable_.reset();
    writable_.reset();
    handlers.ended(lines_.hasFailed() ? End::overlong : End::closed);
    return false;
}

void MessageChannel::write() {
    while (true) {
        if (written_ == outgoing_.size()) {
            static_cast<void>(roundsTaken());
            outgoing_.clear();
            written_ = 0;
            for (const auto& request : std::exchange(waiting_, {})) {
                outgoing_ += request.line;
            }
            if (outgoing_.empty()) {
                outgoing_ = {};
                writable_.reset();
                return;
            }
        }
        isUntaken_ = true;
        const ssize_t count = ::send(socket_.get(), outgoing_.data() + written_, outgoing_.size() - written_,
                                     MSG_DONTWAIT | MSG_NOSIGNAL);
        if (count < 0) {
            if (!isOnlyDelay(errno)) {
                // The other side is gone; reading tells.
                writable_.reset();
            }
            return;
        }
        written_ += static_cast<std::size_t>(count);
    }
}

}  // namespace thermopix
