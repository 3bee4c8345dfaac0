#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "messages/LineReader.h"
#include "messages/MessageCodec.h"
#include "messages/WindowProtocol.h"

namespace thermopix {
namespace {

/// The executable as its resident program runs it, at the other end of a socket.
class WindowsProgram : public testing::Test {
protected:
    ~WindowsProgram() override {
        hangUp();
        if (pid_ > 0) {
            kill(pid_, SIGKILL);
            (void)wait();
        }
    }

    /// `{socket}` among the arguments is the number of the socket.
    void start(std::vector<std::string> arguments, const std::map<std::string, std::string>& display) {
        std::array<int, 2> sockets{};
        std::array<int, 2> errors{};
        ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, sockets.data()), 0);
        ASSERT_EQ(pipe(errors.data()), 0);
        fcntl(sockets[0], F_SETFD, FD_CLOEXEC);
        pid_ = fork();
        if (pid_ == 0) {
            dup2(errors[1], STDERR_FILENO);
            close(errors[0]);
            for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
                unsetenv(variable);
            }
            for (const auto& [name, value] : display) {
                setenv(name.c_str(), value.c_str(), 1);
            }
            arguments.insert(arguments.begin(), THERMOPIX_WINDOWS_PROGRAM);
            std::vector<char*> words;
            for (auto& argument : arguments) {
                if (argument == "{socket}") {
                    argument = std::to_string(sockets[1]);
                }
                words.push_back(argument.data());
            }
            words.push_back(nullptr);
            execv(words[0], words.data());
            _exit(127);
        }
        close(sockets[1]);
        close(errors[1]);
        socket_ = sockets[0];
        errors_ = errors[0];
    }

    void startOffscreen() {
        start({std::string(WindowProtocol::socketOption), "{socket}"}, {{"QT_QPA_PLATFORM", "offscreen"}});
    }

    void write(const std::string& text) const {
        ASSERT_EQ(::send(socket_, text.data(), text.size(), MSG_NOSIGNAL), static_cast<ssize_t>(text.size()));
    }
    void ask(const WindowRequest& request) const { write(MessageCodec::line(request) + "\n"); }

    /// The next event; none when the program has gone.
    std::optional<WindowEvent> next() {
        for (;;) {
            if (const auto line = lines_.takeLine()) {
                return MessageCodec::event(*line);
            }
            std::array<char, 4096> bytes{};
            const ssize_t received = recv(socket_, bytes.data(), bytes.size(), 0);
            if (received <= 0) {
                return std::nullopt;
            }
            lines_.append({bytes.data(), static_cast<std::size_t>(received)});
        }
    }

    void hangUp() {
        if (socket_ >= 0) {
            close(socket_);
            socket_ = -1;
        }
    }

    /// The exit status, or minus the number of the signal that ended it.
    int wait() {
        int status = 0;
        waitpid(pid_, &status, 0);
        pid_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    [[nodiscard]] std::vector<std::string> errorLines() const {
        std::string text;
        std::array<char, 4096> bytes{};
        for (ssize_t count = read(errors_, bytes.data(), bytes.size()); count > 0;
             count = read(errors_, bytes.data(), bytes.size())) {
            text.append(bytes.data(), static_cast<std::size_t>(count));
        }
        std::vector<std::string> lines;
        for (std::size_t start = 0; start < text.size();) {
            const std::size_t end = text.find('\n', start);
            lines.push_back(text.substr(start, end - start));
            start = end == std::string::npos ? text.size() : end + 1;
        }
        return lines;
    }

private:
    pid_t pid_ = -1;
    int socket_ = -1;
    int errors_ = -1;
    LineReader lines_{WindowProtocol::maximumEventBytes};
};

TEST_F(WindowsProgram, GreetsShowsWhatItIsAskedForAndEndsWithTheSocket) {
    startOffscreen();
    EXPECT_EQ(next(), WindowEvent(Hello{}));
    ask(ShowWindow{3, {"Title", 100, 100, "window"}});
    EXPECT_EQ(next(), WindowEvent(WindowVisibilityChanged{3, true, false}));
    hangUp();
    EXPECT_EQ(wait(), 0);
    EXPECT_EQ(errorLines(), std::vector<std::string>{});
}

TEST_F(WindowsProgram, EndsWithItsLastWindow) {
    startOffscreen();
    ask(ShowWindow{3, {"Title", 100, 100, "window"}});
    ask(DiscardWindow{3});
    EXPECT_EQ(wait(), 0);
}

TEST_F(WindowsProgram, EndsWithOneLineWhenItIsAskedForSomethingUnknown) {
    for (const std::string line :
         {"{\"paintTheWall\":{}}\n", "no JSON\n", "\n", "{\"showWindow\":{\"window\":\"x\"}}\n"}) {
        startOffscreen();
        EXPECT_EQ(next(), WindowEvent(Hello{}));
        write(line);
        EXPECT_EQ(wait(), 1) << line;
        EXPECT_EQ(errorLines(), std::vector<std::string>{"thermopix-windows: what came over the socket is no request"});
        hangUp();
    }
}

TEST_F(WindowsProgram, NeedsItsSocket) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{},
                                               {"--socket"},
                                               {"--socket", "zero"},
                                               {"--socket", "900"},
                                               {"--socket", "2"},
                                               {"--socket", "{socket}", "more"},
                                               {"--pipe", "{socket}"}}) {
        start(arguments, {{"QT_QPA_PLATFORM", "offscreen"}});
        EXPECT_EQ(wait(), 2);
        EXPECT_EQ(errorLines().size(), 1U);
        hangUp();
    }
}

TEST_F(WindowsProgram, SaysInOneLineThatThereIsNoDisplay) {
    start({"--socket", "{socket}"}, {});
    EXPECT_EQ(wait(), WindowProtocol::noDisplayStatus);
    EXPECT_EQ(errorLines(), std::vector<std::string>{
                                "thermopix-windows: there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set"});
}

TEST_F(WindowsProgram, DoesNotCrashWhereTheDisplayCannotBeReached) {
    start({"--socket", "{socket}"}, {{"DISPLAY", ":7654"}, {"QT_QPA_PLATFORM", "xcb"}});
    EXPECT_EQ(wait(), WindowProtocol::noDisplayStatus);
    EXPECT_FALSE(errorLines().empty());
}

TEST_F(WindowsProgram, DoesNotCrashWithoutThePlugInOfItsPlatform) {
    start({"--socket", "{socket}"}, {{"DISPLAY", ":0"}, {"QT_QPA_PLATFORM", "nowhere"}});
    EXPECT_EQ(wait(), WindowProtocol::noDisplayStatus);
    EXPECT_EQ(errorLines().size(), 1U);
}

}  // namespace
}  // namespace thermopix
