#pragma once

#include <sys/types.h>

#include <filesystem>
#include <memory>

#include "platform/linux/files/Descriptor.h"

namespace thermopix {

/// The process that reads NVIDIA cards, at the other end of a socket. Nothing here waits for it. Main thread, whose
/// end is the process's end too.
class NvidiaProcess {
public:
    /// Null when the system gives none.
    [[nodiscard]] static std::unique_ptr<NvidiaProcess> start(const std::filesystem::path& program);

    /// Its end of the socket; and its number, 0 where a test plays it.
    explicit NvidiaProcess(Descriptor socket, pid_t id = 0);
    ~NvidiaProcess() { end(); }
    NvidiaProcess(const NvidiaProcess&) = delete;
    NvidiaProcess& operator=(const NvidiaProcess&) = delete;

    [[nodiscard]] int socket() const { return socket_.get(); }

    /// Closes the socket and kills the process.
    void end();

    /// Whether the process that was ended has left the system; until then it holds the cards.
    [[nodiscard]] bool isGone();

private:
    Descriptor socket_;
    pid_t id_;
};

}  // namespace thermopix
