#include "platform/linux/sensors/NvidiaProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <utility>

extern char** environ;  // NOLINT(readability-redundant-declaration): not every libc declares it

namespace thermopix {

std::unique_ptr<NvidiaProcess> NvidiaProcess::start(const std::filesystem::path& program) {
    std::array<int, 2> ends{-1, -1};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return nullptr;
    }
    Descriptor ours(ends[0]);
    const Descriptor theirs(ends[1]);

    // Signals are as they are for any program, and what the library prints goes nowhere: this may be a terminal
    // readout.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigset_t ignored;
    sigemptyset(&none);
    sigemptyset(&ignored);
    sigaddset(&ignored, SIGPIPE);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &ignored);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, theirs.get(), STDIN_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);

    std::string name = program;
    std::array<char*, 2> arguments{name.data(), nullptr};
    pid_t id = 0;
    const int failure = ::posix_spawn(&id, name.c_str(), &actions, &attributes, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    return failure == 0 ? std::make_unique<NvidiaProcess>(std::move(ours), id) : nullptr;
}

NvidiaProcess::NvidiaProcess(Descriptor socket, pid_t id) : socket_(std::move(socket)), id_(id) {}

void NvidiaProcess::end() {
    socket_ = Descriptor(-1);
    if (id_ > 0) {
        ::kill(id_, SIGKILL);
    }
}

bool NvidiaProcess::isGone() {
    if (id_ > 0 && ::waitpid(id_, nullptr, WNOHANG) != 0) {
        id_ = 0;
    }
    return id_ == 0;
}

}  // namespace thermopix
