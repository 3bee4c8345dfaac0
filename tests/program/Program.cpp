#include "program/Program.h"

#include <gio/gunixinputstream.h>
#include <poll.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace thermopix {

namespace {

// How long a test waits before it calls the program stuck; never a measure of speed.
constexpr std::chrono::seconds patience{60};

}  // namespace

Program::Program(const std::vector<std::string>& arguments, const Environment& environment,
                 const std::string& redirections) {
    const GObjectHandle<GSubprocessLauncher> launcher(g_subprocess_launcher_new(
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_PIPE)));
    gchar* nothing = nullptr;
    g_subprocess_launcher_set_environ(launcher.get(), &nothing);
    g_subprocess_launcher_setenv(launcher.get(), "PATH", g_getenv("PATH"), TRUE);
    for (const auto& [name, value] : environment) {
        g_subprocess_launcher_setenv(launcher.get(), name.c_str(), value.c_str(), TRUE);
    }
    const std::string command = "exec \"$0\" \"$@\" " + redirections;
    std::vector<const gchar*> words;
    if (!redirections.empty()) {
        words = {"/bin/sh", "-c", command.c_str()};
    }
    words.push_back(THERMOPIX_PROGRAM);
    for (const auto& argument : arguments) {
        words.push_back(argument.c_str());
    }
    words.push_back(nullptr);
    GErrorSlot error;
    process_.reset(g_subprocess_launcher_spawnv(launcher.get(), words.data(), error.out()));
    if (!process_) {
        throw std::runtime_error(std::string(error.message()));
    }
    pipes_ = {g_unix_input_stream_get_fd(G_UNIX_INPUT_STREAM(g_subprocess_get_stdout_pipe(process_.get()))),
              g_unix_input_stream_get_fd(G_UNIX_INPUT_STREAM(g_subprocess_get_stderr_pipe(process_.get())))};
}

Program::~Program() {
    g_subprocess_force_exit(process_.get());
    g_subprocess_wait(process_.get(), nullptr, nullptr);
}

pid_t Program::pid() const {
    return static_cast<pid_t>(std::atoi(g_subprocess_get_identifier(process_.get())));
}

Program::Result Program::finish() {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (collect(deadline)) {
    }
    if (pipes_[0] >= 0 || pipes_[1] >= 0) {
        g_subprocess_force_exit(process_.get());
    }
    g_subprocess_wait(process_.get(), nullptr, nullptr);
    const bool hasExited = g_subprocess_get_if_exited(process_.get()) != FALSE;
    result_.status = hasExited ? g_subprocess_get_exit_status(process_.get()) : -1;
    return result_;
}

Program::Result Program::run(const std::vector<std::string>& arguments, const Environment& environment,
                             const std::string& redirections) {
    return Program(arguments, environment, redirections).finish();
}

bool Program::waitFor(const std::string& collected, const std::string& text) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (collected.find(text) == std::string::npos) {
        if (!collect(deadline)) {
            return false;
        }
    }
    return true;
}

bool Program::collect(std::chrono::steady_clock::time_point deadline) {
    std::array<pollfd, 2> waiting{{{pipes_[0], POLLIN, 0}, {pipes_[1], POLLIN, 0}}};
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    if ((pipes_[0] < 0 && pipes_[1] < 0) || left.count() <= 0 ||
        ::poll(waiting.data(), waiting.size(), static_cast<int>(left.count())) <= 0) {
        return false;
    }
    const std::array<std::string*, 2> texts{&result_.output, &result_.errors};
    for (std::size_t i = 0; i < waiting.size(); ++i) {
        if (waiting[i].revents == 0) {
            continue;
        }
        std::array<char, 4096> buffer{};
        const auto count = ::read(pipes_[i], buffer.data(), buffer.size());
        if (count > 0) {
            texts[i]->append(buffer.data(), static_cast<std::size_t>(count));
        } else {
            pipes_[i] = -1;
        }
    }
    return true;
}

}  // namespace thermopix
