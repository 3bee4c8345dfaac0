#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "messages/LineReader.h"
#include "messages/WindowProtocol.h"
#include "messages/WindowRequest.h"
#include "platform/linux/files/Descriptor.h"
#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {

/// Requests out and lines in, over a stream socket served by the main loop; never waits for the other side. Requests
/// of one turn of the loop travel together. Main thread.
class MessageChannel {
public:
    enum class End {
        closed,
        /// A line was too long.
        overlong,
    };
    struct Handlers {
        std::function<void(std::string_view line)> received;
        /// The other side has gone: told once, and nothing is read after it. Both handlers may end the channel.
        std::function<void(End)> ended;
    };

    MessageChannel(Descriptor socket, Handlers handlers);
    MessageChannel(const MessageChannel&) = delete;
    MessageChannel& operator=(const MessageChannel&) = delete;

    /// Replaces a request of the same kind to the same window that the other side has not taken yet.
    void send(const WindowRequest& request);

    /// How often the other side was seen to have read all that was sent; it stands still while that does not read.
    [[nodiscard]] std::size_t roundsTaken();

    /// Tells what has arrived already; for when nothing can follow.
    void readRest();

private:
    struct Waiting {
        std::size_t kind;
        std::optional<WindowId> window;
        std::string line;
    };

    static gboolean serve(gint descriptor, GIOCondition condition, gpointer channel) noexcept;
    [[nodiscard]] GSourceHandle watch(GIOCondition condition);
    /// False when there is nothing more to read now.
    bool read();
    void write();

    Descriptor socket_;
    Handlers handlers_;
    LineReader lines_{WindowProtocol::maximumEventBytes};
    bool hasEnded_ = false;
    /// The bytes under way, and how many of them are sent.
    std::string outgoing_;
    std::size_t written_ = 0;
    std::vector<Waiting> waiting_;
    std::size_t roundsTaken_ = 0;
    bool isUntaken_ = false;
    GSourceHandle readable_;
    GSourceHandle writable_;
    std::shared_ptr<MessageChannel*> self_ = std::make_shared<MessageChannel*>(this);
};

}  // namespace thermopix
