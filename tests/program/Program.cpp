#include "program/Program.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <stdexcept>

namespace thermopix {

namespace {

// How long a test waits before it calls the program stuck; never a measure of speed.
constexpr std::chrono::seconds patience{60};

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> all;
    for (auto& text : texts) {
        all.push_back(text.data());
    }
    all.push_back(nullptr);
    return all;
}

void closeOnce(int& descriptor) {
    if (descriptor >= 0) {
        ::close(descriptor);
        descriptor = -1;
    }
}

}  // namespace

Program::Program(const std::vector<std::string>& arguments, const Environment& environment) {
    std::array<int, 2> output{};
    std::array<int, 2> errors{};
    if (::pipe2(output.data(), O_CLOEXEC) != 0 || ::pipe2(errors.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors[1], STDERR_FILENO);

    std::vector<std::string> words{THERMOPIX_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables;
    const char* path = std::getenv("PATH");
    variables.push_back(std::string("PATH=") + (path == nullptr ? "/usr/bin:/bin" : path));
    for (const auto& [name, value] : environment) {
        variables.push_back(name + "=" + value);
    }
    auto argumentPointers = pointers(words);
    auto variablePointers = pointers(variables);
    const int failure =
        ::posix_spawn(&pid_, THERMOPIX_PROGRAM, &actions, nullptr, argumentPointers.data(), variablePointers.data());
    posix_spawn_file_actions_destroy(&actions);
    ::close(output[1]);
    ::close(errors[1]);
    outputPipe_ = output[0];
    errorsPipe_ = errors[0];
    if (failure != 0) {
        pid_ = -1;
        throw std::runtime_error("cannot start " THERMOPIX_PROGRAM);
    }
}

Program::~Program() {
    if (pid_ > 0 && !waited_) {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }
    closeOnce(outputPipe_);
    closeOnce(errorsPipe_);
}

bool Program::waitForOutput(const std::string& text) {
    return waitFor(result_.output, text);
}

bool Program::waitForErrors(const std::string& text) {
    return waitFor(result_.errors, text);
}

void Program::signal(int number) const {
    ::kill(pid_, number);
}

bool Program::hasEnded() {
    int status = 0;
    if (!waited_ && ::waitpid(pid_, &status, WNOHANG) == pid_) {
        waited_ = status;
    }
    return waited_.has_value();
}

Program::Result Program::finish() {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (collect(deadline)) {
    }
    int status = 0;
    if (waited_) {
        status = *waited_;
    } else {
        if (outputPipe_ >= 0 || errorsPipe_ >= 0) {
            ::kill(pid_, SIGKILL);
        }
        ::waitpid(pid_, &status, 0);
    }
    pid_ = -1;
    result_.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result_;
}

Program::Result Program::run(const std::vector<std::string>& arguments, const Environment& environment) {
    return Program(arguments, environment).finish();
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
    std::array<pollfd, 2> waiting{{{outputPipe_, POLLIN, 0}, {errorsPipe_, POLLIN, 0}}};
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    if ((outputPipe_ < 0 && errorsPipe_ < 0) || left.count() <= 0 ||
        ::poll(waiting.data(), waiting.size(), static_cast<int>(left.count())) <= 0) {
        return false;
    }
    const auto read = [](const pollfd& ready, int& descriptor, std::string& text) {
        if (descriptor < 0 || ready.revents == 0) {
            return;
        }
        std::array<char, 4096> buffer{};
        const auto count = ::read(descriptor, buffer.data(), buffer.size());
        if (count > 0) {
            text.append(buffer.data(), static_cast<std::size_t>(count));
        } else {
            closeOnce(descriptor);
        }
    };
    read(waiting[0], outputPipe_, result_.output);
    read(waiting[1], errorsPipe_, result_.errors);
    return true;
}

}  // namespace thermopix
