#include "environment/Log.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace thermopix {
namespace {

class RecordingSystemLog final : public SystemLog {
public:
    void write(std::string_view category, std::string_view message) override {
        messages.emplace_back(category, message);
    }

    std::vector<std::pair<std::string, std::string>> messages;
};

/// Takes the place of standard error and keeps every write apart, as a message of its own.
class StandardErrorCapture {
public:
    StandardErrorCapture() : former_(dup(STDERR_FILENO)) {
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_DGRAM, 0, ends_.data()), 0);
        EXPECT_EQ(dup2(ends_[0], STDERR_FILENO), STDERR_FILENO);
    }
    StandardErrorCapture(const StandardErrorCapture&) = delete;
    StandardErrorCapture& operator=(const StandardErrorCapture&) = delete;
    ~StandardErrorCapture() {
        dup2(former_, STDERR_FILENO);
        for (const int descriptor : {former_, ends_[0], ends_[1]}) {
            close(descriptor);
        }
    }

    [[nodiscard]] std::vector<std::string> writes() const {
        std::vector<std::string> found;
        std::array<char, 8192> buffer{};
        for (;;) {
            const auto length = recv(ends_[1], buffer.data(), buffer.size(), MSG_DONTWAIT);
            if (length <= 0) {
                return found;
            }
            found.emplace_back(buffer.data(), static_cast<std::size_t>(length));
        }
    }

private:
    int former_;
    std::array<int, 2> ends_{};
};

TEST(Log, WritesEachMessageToTheSystemLogAndAsOneLineToStandardError) {
    RecordingSystemLog systemLog;
    Log log(systemLog);
    const StandardErrorCapture capture;
    log.diag("sensor", "resolved 12 sensors");
    log.diag("login", "setOpenAtLogin(true) failed: 3°");
    EXPECT_EQ(capture.writes(), (std::vector<std::string>{"[Thermopix/sensor] resolved 12 sensors\n",
                                                          "[Thermopix/login] setOpenAtLogin(true) failed: 3°\n"}));
    EXPECT_EQ(systemLog.messages,
              (std::vector<std::pair<std::string, std::string>>{{"sensor", "resolved 12 sensors"},
                                                                {"login", "setOpenAtLogin(true) failed: 3°"}}));
}

TEST(Log, WritesAMessageInOnePieceAndAsItIsButForBadBytes) {
    const std::string longMessage(5000, 'x');
    for (const auto& [message, written] : std::vector<std::pair<std::string, std::string>>{
             {longMessage, longMessage}, {"100%s {} {0}", "100%s {} {0}"}, {"name \xff.", "name \uFFFD."}}) {
        RecordingSystemLog systemLog;
        Log log(systemLog);
        const StandardErrorCapture capture;
        log.diag("sensor", message);
        EXPECT_EQ(capture.writes(), std::vector{"[Thermopix/sensor] " + written + "\n"});
        EXPECT_EQ(systemLog.messages.front().second, written);
    }
}

}  // namespace
}  // namespace thermopix
