#include "platform/linux/windows/WindowClient.h"

#include <fmt/format.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <utility>
#include <variant>

#include "messages/MessageCodec.h"
#include "messages/WindowProtocol.h"
#include "platform/linux/files/CompanionProgram.h"

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

bool wantsAnswer(const WindowRequest& request) {
    return showsSomething(request) || std::holds_alternative<OrderWindowFront>(request);
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

/// The process inherits the socket and the standard streams, and nothing else.
GObjectHandle<GSubprocess> spawn(const std::filesystem::path& program, const EnvironmentVariables& variables,
                                 Descriptor socket, GErrorSlot& error) {
    const GObjectHandle<GSubprocessLauncher> launcher(g_subprocess_launcher_new(G_SUBPROCESS_FLAGS_STDIN_INHERIT));
    g_subprocess_launcher_take_fd(launcher.get(), socket.release(), WindowClient::inheritedDescriptor);
    gchar* nothing = nullptr;
    g_subprocess_launcher_set_environ(launcher.get(), &nothing);
    for (const auto& [name, value] : variables) {
        g_subprocess_launcher_setenv(launcher.get(), name.c_str(), value.c_str(), TRUE);
    }
    g_subprocess_launcher_set_child_setup(
        launcher.get(),
        [](gpointer) {
            // An ignored signal would be inherited.
            std::signal(SIGPIPE, SIG_DFL);
            // Also when it is stopped and does not notice that its socket has ended.
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        },
        nullptr, nullptr);
    const std::string option(WindowProtocol::socketOption);
    const std::string number = std::to_string(WindowClient::inheritedDescriptor);
    return GObjectHandle<GSubprocess>(g_subprocess_launcher_spawn(launcher.get(), error.out(), program.c_str(),
                                                                  option.c_str(), number.c_str(), nullptr));
}

}  // namespace

/// One process, from its start until it is reaped.
struct WindowClient::Running {
    Running() : cancellable(g_cancellable_new()) {}
    ~Running() {
        g_cancellable_cancel(cancellable.get());
        // Nothing is left to be done in order, and a process that is stopped takes no other signal.
        g_subprocess_force_exit(child.get());
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    GObjectHandle<GSubprocess> child;
    /// Of the wait for its end.
    GObjectHandle<GCancellable> cancellable;
    /// Null while the process is ending.
    std::unique_ptr<MessageChannel> channel;
    bool hasSaidHello = false;
    std::string failure;
    Subscription patience;
    /// While a request may be unread that wants to be seen, and the channel's rounds before that.
    Subscription answer;
    std::size_t takenBefore = 0;
};

WindowClient::WindowClient(Options options, MainLoop& mainLoop, DiagnosticLog& log)
    : options_(std::move(options)), mainLoop_(mainLoop), log_(log) {}

WindowClient::~WindowClient() = default;

void WindowClient::send(const WindowRequest& request) {
    if (running_ && !running_->channel) {
        waiting_.push_back(request);
    } else if (running_ || (showsSomething(request) && start())) {
        running_->channel->send(request);
        if (wantsAnswer(request)) {
            expectAnswer(request);
        }
    }
}

void WindowClient::expectAnswer(const WindowRequest& request) {
    const std::size_t taken = running_->channel->roundsTaken();
    // What is still unread is not put off by what follows.
    if (running_->answer.isActive() && running_->takenBefore == taken) {
        return;
    }
    running_->takenBefore = taken;
    running_->answer = mainLoop_.oneShot(patienceWithSilence, [this, request] {
        running_->answer.cancel();
        if (running_->hasSaidHello && running_->channel->roundsTaken() == running_->takenBefore) {
            replace(request);
        }
    });
}

void WindowClient::replace(const WindowRequest& request) {
    log_.diag(logCategory, fmt::format("{} does not answer; it is started anew.", WindowProtocol::executable));
    running_.reset();
    ended_.tell(WindowProcessEnd{.failure = {}, .wasSilent = true});
    // A window may have asked for itself already, and for its content after that.
    if (!running_ || !std::holds_alternative<ShowWindow>(request)) {
        send(request);
    }
}

bool WindowClient::start() {
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

std::string WindowClient::startFailure() {
    if (!hasDisplay(options_.variables)) {
        return noDisplay;
    }
    const auto executable = windowExecutable(options_.program, options_.variables);
    if (!executable) {
        return fmt::format("{} is not installed.", WindowProtocol::executable);
    }
    std::array<int, 2> ends{-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return fmt::format("{} cannot be started: {}.", executable->string(), strerror(errno));
    }
    Descriptor ours(ends[0]);
    GErrorSlot error;
    GObjectHandle<GSubprocess> child = spawn(*executable, options_.variables, Descriptor(ends[1]), error);
    if (!child) {
        return fmt::format("{}.", error.message());
    }
    running_ = std::make_unique<Running>();
    running_->child = std::move(child);
    g_subprocess_wait_async(running_->child.get(), running_->cancellable.get(), &WindowClient::childEnded, this);
    running_->channel = std::make_unique<MessageChannel>(
        std::move(ours), MessageChannel::Handlers{.received = [this](std::string_view line) { received(line); },
                                                  .ended = [this](MessageChannel::End end) { channelEnded(end); }});
    return {};
}

void WindowClient::received(std::string_view line) {
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

void WindowClient::channelEnded(MessageChannel::End end) {
    if (end == MessageChannel::End::overlong) {
        condemn(fmt::format("{} sent an endless message.", WindowProtocol::executable));
        return;
    }
    running_->channel.reset();
    running_->answer.cancel();
    running_->patience = mainLoop_.oneShot(patienceAtEnd, [this] { g_subprocess_force_exit(running_->child.get()); });
}

void WindowClient::condemn(std::string reason) {
    running_->failure = std::move(reason);
    g_subprocess_force_exit(running_->child.get());
    running_->channel.reset();
    running_->patience.cancel();
    running_->answer.cancel();
}

void WindowClient::childEnded(GObject* child, GAsyncResult* result, gpointer client) {
    // An error means that nobody waits any more.
    if (g_subprocess_wait_finish(G_SUBPROCESS(child), result, nullptr) != FALSE) {
        static_cast<WindowClient*>(client)->exited(g_subprocess_get_status(G_SUBPROCESS(child)));
    }
}

void WindowClient::exited(int status) {
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

void WindowClient::report(std::string failure) {
    if (!failure.empty()) {
        log_.diag(logCategory, failure);
    }
    ended_.tell(WindowProcessEnd{.failure = std::move(failure)});
}

std::optional<std::filesystem::path> windowExecutable(const std::filesystem::path& program,
                                                      const EnvironmentVariables& variables) {
    if (const auto chosen = variables.find("THERMOPIX_WINDOWS"); chosen != variables.end()) {
        return isProgram(chosen->second) ? std::optional<std::filesystem::path>(chosen->second) : std::nullopt;
    }
    return companionProgram(program.parent_path(), WindowProtocol::executable);
}

bool hasDisplay(const EnvironmentVariables& variables) {
    return !textOf(variables, "WAYLAND_DISPLAY").empty() || !textOf(variables, "DISPLAY").empty();
}

}  // namespace thermopix
