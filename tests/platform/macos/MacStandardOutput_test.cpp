#include "platform/macos/system/MacStandardOutput.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>
#include <thread>

namespace thermopix {
namespace {

class Pipe {
public:
    Pipe() { EXPECT_EQ(pipe(ends_.data()), 0); }
    ~Pipe() {
        closeReader();
        closeWriter();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    [[nodiscard]] int reader() const { return ends_[0]; }
    [[nodiscard]] int writer() const { return ends_[1]; }
    void closeReader() { closeEnd(ends_[0]); }
    void closeWriter() { closeEnd(ends_[1]); }

    /// Everything up to the end.
    [[nodiscard]] std::string readAll() const {
        std::string text;
        std::array<char, 4096> bytes{};
        for (ssize_t count = 0; (count = read(ends_[0], bytes.data(), bytes.size())) > 0;) {
            text.append(bytes.data(), static_cast<std::size_t>(count));
        }
        return text;
    }

private:
    static void closeEnd(int& descriptor) {
        if (descriptor >= 0) {
            close(descriptor);
            descriptor = -1;
        }
    }

    std::array<int, 2> ends_{-1, -1};
};

TEST(MacStandardOutputTest, ALineEndsWithALineFeed) {
    Pipe pipe;
    MacStandardOutput output(pipe.writer());
    output.line("machine: Mac15,3");
    output.line("");
    pipe.closeWriter();
    EXPECT_EQ(pipe.readAll(), "machine: Mac15,3\n\n");
}

TEST(MacStandardOutputTest, ALongLineIsWrittenWholeThoughThePipeIsFullAndDoesNotWait) {
    Pipe pipe;
    ASSERT_EQ(fcntl(pipe.writer(), F_SETFL, O_NONBLOCK), 0);
    const std::string text(1'000'000, 'x');
    std::string got;
    std::thread reader([&] { got = pipe.readAll(); });
    MacStandardOutput(pipe.writer()).line(text);
    pipe.closeWriter();
    reader.join();
    EXPECT_EQ(got, text + "\n");
}

TEST(MacStandardOutputTest, AnOutputThatNobodyReadsIsGivenUp) {
    std::signal(SIGPIPE, SIG_IGN);
    Pipe pipe;
    pipe.closeReader();
    MacStandardOutput(pipe.writer()).line("nobody hears this");
    MacStandardOutput(-1).line("nor this");
}

}  // namespace
}  // namespace thermopix
