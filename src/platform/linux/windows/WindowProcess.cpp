#include "platform/linux/windows/WindowProcess.h"

#include <fmt/format.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <system_error>
#include <utility>
#include <variant>

#include "messages/MessageCodec.h"
#include "messages/WindowProtocol.h"
#include "platform/linux/windows/WindowExecutable.h"

namespace thermopix {

namespace {

using namespace std::chrono_literals;

constexpr const char* logCategory = "windows";
constexpr const char* noDisplay = "There is no display to show windows on.";
constexpr auto patienceAtStart = 30s;
// From the end of its side of the socket to its own.
constexpr auto patienceAtEnd = 5s;

bool showsSomething(const WindowRequest& request) {
    return std::holds_alternative<ShowWindow>(request) || std::holds_alternative<ShowAboutPanel>(request) ||
           std::holds_alternative<OpenPopupMenu>(request) || std::holds_alternative<ShowStrip>(request);
}

bool hasDisplay(const EnvironmentVariables& variables) {
    constexpr std::array names{"WAYLAND_DISPLAY", "DISPLAY"};
    return std::any_of(names.begin(), names.end(), [&](const char* name) {
        const auto variable = variables.find(name);
        return variable != variables.end() && !variable->second.empty();
    });
}

// Empty for a good end.
std::string describe(int status) {
    if (WIFSIGNALED(status)) {
        return fmt::format("{} was ended by signal {} ({}).", WindowProtocol::executable, WTERMSIG(status),
                           strsignal(WTERMSIG(status)));
    }
    const int code = WEXITSTATUS(status);
    if (code == WindowProtocol::noDisplayStatus) {
        return noDisplay;
    }
    return code == 0 ? std::string() : fmt::format("{} ended with status {}.", WindowProtocol::executable, code);
}

}  // namespace

/// One process, from its start until it is reaped.
struct WindowProcess::Running {
    std::unique_ptr<ChildProcess> child;
    /// Null while the process is ending.
    std::unique_ptr<MessageChannel> channel;
    bool hasSaidHello = false;
    std::string failure;
    Subscription patience;
};

WindowProcess::WindowProcess(Options options, MainLoop& mainLoop, DiagnosticLog& log)
    : options_(std::move(options)), mainLoop_(mainLoop), log_(log) {}

WindowProcess::~WindowProcess() = default;

void WindowProcess::send(const WindowRequest& request) {
    if (running_ && !running_->channel) {
        waiting_.push_back(request);
    } else if (running_ || (showsSomething(request) && start())) {
        running_->channel->send(request);
    }
}

bool WindowProcess::start() {
    if (startFailed_.isActive()) {
        return false;
    }
    if (auto failure = startFailure(); !failure.empty()) {
        startFailed_ = mainLoop_.oneShot(0s, [this, reason = std::move(failure)] {
            std::string told = reason;
            startFailed_.cancel();
            report(std::move(told));
        });
        return false;
    }
    running_->patience = mainLoop_.oneShot(
        patienceAtStart, [this] { condemn(fmt::format("{} did not come up.", WindowProtocol::executable)); });
    started_.tell();
    return true;
}

std::string WindowProcess::startFailure() {
    if (!hasDisplay(options_.variables)) {
        return noDisplay;
    }
    const auto executable = windowExecutable(options_.program, options_.variables);
    if (!executable) {
        return fmt::format("{} is not installed.", WindowProtocol::executable);
    }
    std::error_code error;
    std::array<int, 2> ends{-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        error = std::error_code(errno, std::generic_category());
    }
    Descriptor ours(ends[0]);
    const Descriptor theirs(ends[1]);
    std::unique_ptr<ChildProcess> child;
    if (!error) {
        child = ChildProcess::start(
            *executable, {std::string(WindowProtocol::socketOption), std::to_string(ChildProcess::inheritedDescriptor)},
            options_.variables, theirs.get(), error);
    }
    if (!child) {
        return fmt::format("{} cannot be started: {}.", executable->string(), error.message());
    }
    child->onExit = [this](int status) { exited(status); };
    running_ = std::make_unique<Running>();
    running_->child = std::move(child);
    running_->channel = std::make_unique<MessageChannel>(
        std::move(ours), MessageChannel::Handlers{.received = [this](std::string_view line) { received(line); },
                                                  .ended = [this](MessageChannel::End end) { channelEnded(end); }});
    return {};
}

void WindowProcess::received(std::string_view line) {
    const auto event = MessageCodec::event(line);
    const auto* hello = event ? std::get_if<Hello>(&*event) : nullptr;
    if (!event || (hello != nullptr) == running_->hasSaidHello) {
        condemn(fmt::format("{} sent a malformed message.", WindowProtocol::executable));
    } else if (hello == nullptr) {
        events_.tell(*event);
    } else if (hello->version != WindowProtocol::version) {
        condemn(fmt::format("{} is of another version than this program.", WindowProtocol::executable));
    } else {
        running_->hasSaidHello = true;
        running_->patience.cancel();
    }
}

void WindowProcess::channelEnded(MessageChannel::End end) {
    if (end == MessageChannel::End::overlong) {
        condemn(fmt::format("{} sent an endless message.", WindowProtocol::executable));
        return;
    }
    running_->channel.reset();
    running_->patience = mainLoop_.oneShot(patienceAtEnd, [this] { running_->child->kill(); });
}

void WindowProcess::condemn(std::string reason) {
    running_->failure = std::move(reason);
    running_->child->kill();
    running_->channel.reset();
    running_->patience.cancel();
}

void WindowProcess::exited(int status) {
    if (running_->channel) {
        running_->channel->readRest();
    }
    std::string failure = std::move(running_->failure);
    if (failure.empty()) {
        failure = describe(status);
    }
    if (failure.empty() && !running_->hasSaidHello) {
        failure = fmt::format("{} ended before it came up.", WindowProtocol::executable);
    }
    running_.reset();
    const auto waiting = std::exchange(waiting_, {});
    report(std::move(failure));
    for (const auto& request : waiting) {
        send(request);
    }
}

void WindowProcess::report(std::string failure) {
    if (!failure.empty()) {
        log_.diag(logCategory, failure);
    }
    ended_.tell(WindowProcessEnd{std::move(failure)});
}

}  // namespace thermopix
