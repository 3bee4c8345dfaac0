#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Observers.h"
#include "messages/WindowEvent.h"
#include "messages/WindowRequest.h"
#include "platform/linux/windows/MessageChannel.h"
#include "system/DiagnosticLog.h"
#include "system/MainLoop.h"
#include "system/Platform.h"

namespace thermopix {

/// How a window process ended, or that it could not be started.
struct WindowProcessEnd {
    /// A sentence for the user; empty when the process ended by itself in good order or is about to be started anew.
    std::string failure;
    /// It did not answer when it was asked for something; what it showed is to be asked for again.
    bool wasSilent = false;

    [[nodiscard]] bool isFailure() const { return !failure.empty(); }
};

/// Our side of the process that shows the windows, which is started by the first request to show something, gone with
/// its last window, and started anew by the next such request, whatever became of it. Handlers run on the main loop,
/// never inside `send`, apart from those of a start, and do not end this object. Main thread.
class WindowClient {
public:
    /// How long a process may leave a request unread that shows something. Then it is ended and the next one asked.
    static constexpr std::chrono::seconds patienceWithSilence{10};

    /// The number of the socket in the process.
    static constexpr int inheritedDescriptor = 3;

    struct Options {
        /// The running program; the executable of the windows is looked for beside it at each start.
        std::filesystem::path program;
        /// The whole environment of the process. Without a display in it, there is no start.
        EnvironmentVariables variables;
    };

    /// `mainLoop` and `log` outlive the client.
    WindowClient(Options options, MainLoop& mainLoop, DiagnosticLog& log);
    ~WindowClient();
    WindowClient(const WindowClient&) = delete;
    WindowClient& operator=(const WindowClient&) = delete;

    /// Without a running process, a request that shows nothing is dropped.
    void send(const WindowRequest& request);

    [[nodiscard]] bool isRunning() const { return running_ != nullptr; }

    /// A process was started and knows nothing yet; what is sent inside the handler comes before all else.
    [[nodiscard]] Subscription onStart(std::function<void()> handler) { return started_.add(std::move(handler)); }
    [[nodiscard]] Subscription onEvent(std::function<void(const WindowEvent&)> handler) {
        return events_.add(std::move(handler));
    }
    /// The process has nothing on the screen any more.
    [[nodiscard]] Subscription onEnd(std::function<void(const WindowProcessEnd&)> handler) {
        return ended_.add(std::move(handler));
    }

private:
    struct Running;

    [[nodiscard]] bool start();
    [[nodiscard]] std::string startFailure();
    void received(std::string_view line);
    void channelEnded(MessageChannel::End end);
    static void childEnded(GObject* child, GAsyncResult* result, gpointer client);
    void exited(int status);
    void expectAnswer(const WindowRequest& request);
    void replace(const WindowRequest& request);
    /// Ends a process that cannot be trusted.
    void condemn(std::string reason);
    void report(std::string failure);

    Options options_;
    MainLoop& mainLoop_;
    DiagnosticLog& log_;
    std::unique_ptr<Running> running_;
    /// Requests for the next process, kept while the last one is ending.
    std::vector<WindowRequest> waiting_;
    Subscription startFailed_;
    Observers<> started_;
    Observers<WindowEvent> events_;
    Observers<WindowProcessEnd> ended_;
};

/// The executable of the window process: the one that `THERMOPIX_WINDOWS` names, else the one that comes with
/// `program`. None when there is no such program.
[[nodiscard]] std::optional<std::filesystem::path> windowExecutable(const std::filesystem::path& program,
                                                                    const EnvironmentVariables& variables);

/// Whether there is a display for windows.
[[nodiscard]] bool hasDisplay(const EnvironmentVariables& variables);

}  // namespace thermopix
