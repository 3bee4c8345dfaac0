#pragma once

#include <QSocketNotifier>
#include <functional>
#include <string>

#include "messages/LineReader.h"
#include "messages/WindowEvent.h"
#include "messages/WindowRequest.h"

namespace thermopix {

/// The connection to the resident program. Main thread.
class MessageSocket {
public:
    /// Takes the connected stream socket; `Hello` is said by the owner.
    explicit MessageSocket(int descriptor);
    ~MessageSocket();
    MessageSocket(const MessageSocket&) = delete;
    MessageSocket& operator=(const MessageSocket&) = delete;

    std::function<void(const WindowRequest&)> onRequest;
    /// The other side is gone.
    std::function<void()> onEnd;
    /// What came is no request; nothing more is read.
    std::function<void()> onMalformed;

    /// Sends the event at the end of the present turn of the event loop, together with that turn's others, so that the
    /// other side reads what happened at once as one; at the latest when this ends.
    void send(const WindowEvent& event);

private:
    void flush();
    void receive();
    void takeLines();

    int descriptor_;
    QSocketNotifier notifier_;
    LineReader lines_;
    std::string unsent_;
};

}  // namespace thermopix
