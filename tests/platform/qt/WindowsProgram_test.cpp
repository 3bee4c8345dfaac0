#include <gtest/gtest.h>
#include <sys/socket.h>

#include <array>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "messages/Fields.h"
#include "messages/LineReader.h"
#include "messages/MessageCodec.h"
#include "messages/WindowProtocol.h"
#include "platform/linux/files/Descriptor.h"
#include "platform/linux/glib/GLibHandles.h"

namespace thermopix {
namespace {

/// The executable as its resident program runs it, at the other end of a socket.
class WindowsProgram : public testing::Test {
protected:
    ~WindowsProgram() override {
        if (process_) {
            g_subprocess_force_exit(process_.get());
        }
    }

    /// The socket is its descriptor 3.
    void start(const std::vector<std::string>& arguments, const std::map<std::string, std::string>& display) {
        std::array<int, 2> sockets{};
        ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()), 0);
        socket_ = Descriptor(sockets[0]);
        const GObjectHandle<GSubprocessLauncher> launcher(g_subprocess_launcher_new(G_SUBPROCESS_FLAGS_STDERR_PIPE));
        g_subprocess_launcher_take_fd(launcher.get(), sockets[1], 3);
        for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            g_subprocess_launcher_unsetenv(launcher.get(), variable);
        }
        for (const auto& [name, value] : display) {
            g_subprocess_launcher_setenv(launcher.get(), name.c_str(), value.c_str(), TRUE);
        }
        std::vector<const gchar*> words{THERMOPIX_WINDOWS_PROGRAM};
        for (const auto& argument : arguments) {
            words.push_back(argument.c_str());
        }
        words.push_back(nullptr);
        process_.reset(g_subprocess_launcher_spawnv(launcher.get(), words.data(), nullptr));
        ASSERT_NE(process_, nullptr);
    }

    void startOffscreen() { start(socketArguments, {{"QT_QPA_PLATFORM", "offscreen"}}); }

    void write(const std::string& text) const {
        ASSERT_EQ(::send(socket_.get(), text.data(), text.size(), MSG_NOSIGNAL), static_cast<ssize_t>(text.size()));
    }
    void ask(const WindowRequest& request) const { write(MessageCodec::line(request) + "\n"); }

    /// The next event; none when the program has gone.
    std::optional<WindowEvent> next() {
        for (;;) {
            if (const auto line = lines_.takeLine()) {
                return MessageCodec::event(*line);
            }
            std::array<char, 4096> bytes{};
            const ssize_t received = recv(socket_.get(), bytes.data(), bytes.size(), 0);
            if (received <= 0) {
                return std::nullopt;
            }
            lines_.append({bytes.data(), static_cast<std::size_t>(received)});
        }
    }

    void hangUp() { socket_ = Descriptor(-1); }

    /// Waits for the end of the program; its status, or -1 when a signal ended it.
    int wait() {
        gchar* errors = nullptr;
        g_subprocess_communicate_utf8(process_.get(), nullptr, nullptr, nullptr, &errors, nullptr);
        const GStringHandle owned(errors);
        std::istringstream lines(errors == nullptr ? "" : errors);
        errorLines.clear();
        for (std::string line; std::getline(lines, line);) {
            errorLines.push_back(line);
        }
        const bool hasExited = g_subprocess_get_if_exited(process_.get()) != FALSE;
        return hasExited ? g_subprocess_get_exit_status(process_.get()) : -1;
    }

    const std::vector<std::string> socketArguments{std::string(WindowProtocol::socketOption), "3"};
    std::vector<std::string> errorLines;

private:
    GObjectHandle<GSubprocess> process_;
    Descriptor socket_{-1};
    LineReader lines_{WindowProtocol::maximumEventBytes};
};

TEST_F(WindowsProgram, GreetsShowsWhatItIsAskedForAndEndsWithTheSocket) {
    startOffscreen();
    EXPECT_EQ(next(), WindowEvent(Hello{}));
    ask(ShowWindow{3, {"Title", 100, 100, "window"}});
    EXPECT_EQ(next(), WindowEvent(WindowVisibilityChanged{3, true, false}));
    hangUp();
    EXPECT_EQ(wait(), 0);
    EXPECT_EQ(errorLines, std::vector<std::string>{});
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
        EXPECT_EQ(errorLines, std::vector<std::string>{"thermopix-windows: what came over the socket is no request"});
        hangUp();
    }
}

TEST_F(WindowsProgram, NeedsItsSocket) {
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{{},
                                                                                           {"--socket"},
                                                                                           {"--socket", "zero"},
                                                                                           {"--socket", "900"},
                                                                                           {"--socket", "2"},
                                                                                           {"--socket", "3", "more"},
                                                                                           {"--pipe", "3"}}) {
        start(arguments, {{"QT_QPA_PLATFORM", "offscreen"}});
        EXPECT_EQ(wait(), 2);
        EXPECT_EQ(errorLines.size(), 1U);
        hangUp();
    }
}

TEST_F(WindowsProgram, SaysInOneLineThatThereIsNoDisplay) {
    start(socketArguments, {});
    EXPECT_EQ(wait(), WindowProtocol::noDisplayStatus);
    EXPECT_EQ(errorLines, std::vector<std::string>{
                              "thermopix-windows: there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set"});
}

TEST_F(WindowsProgram, DoesNotCrashWhereTheDisplayCannotBeReached) {
    start(socketArguments, {{"DISPLAY", ":7654"}, {"QT_QPA_PLATFORM", "xcb"}});
    EXPECT_EQ(wait(), WindowProtocol::noDisplayStatus);
    EXPECT_FALSE(errorLines.empty());
}

TEST_F(WindowsProgram, DoesNotCrashWithoutThePlugInOfItsPlatform) {
    start(socketArguments, {{"DISPLAY", ":0"}, {"QT_QPA_PLATFORM", "nowhere"}});
    EXPECT_EQ(wait(), WindowProtocol::noDisplayStatus);
    EXPECT_EQ(errorLines.size(), 1U);
}

}  // namespace
}  // namespace thermopix
