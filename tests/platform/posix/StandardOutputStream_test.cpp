#include "platform/posix/StandardOutputStream.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <thread>

#include "platform/linux/files/Descriptor.h"

namespace thermopix {
namespace {

struct Pipe {
    Pipe() : Pipe(opened()) {}

    [[nodiscard]] std::string readAll() {
        writing = Descriptor(-1);
        std::string text;
        std::array<char, 4096> buffer{};
        for (;;) {
            const ssize_t count = read(reading.get(), buffer.data(), buffer.size());
            if (count <= 0) {
                return text;
            }
            text.append(buffer.data(), static_cast<std::size_t>(count));
        }
    }

    Descriptor reading;
    Descriptor writing;

private:
    explicit Pipe(std::array<int, 2> ends) : reading(ends[0]), writing(ends[1]) {}

    static std::array<int, 2> opened() {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        return ends;
    }
};

TEST(StandardOutputStream, EndsEachLineWithALineFeed) {
    Pipe pipe;
    StandardOutputStream stream(pipe.writing.get());
    stream.line("Thermopix sensor report");
    stream.line("");
    stream.line("CPU 54°");
    EXPECT_FALSE(stream.hasFailed());
    EXPECT_EQ(pipe.readAll(), "Thermopix sensor report\n\nCPU 54°\n");
}

TEST(StandardOutputStream, EachLineIsOneWriteAndKeptBackByNothing) {
    std::array<int, 2> ends{};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_DGRAM, 0, ends.data()), 0);
    const Descriptor writing(ends[0]);
    const Descriptor reading(ends[1]);
    StandardOutputStream stream(writing.get());
    stream.line("first");
    stream.line("second");
    for (const std::string_view expected : {"first\n", "second\n"}) {
        std::array<char, 64> buffer{};
        const ssize_t count = recv(reading.get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
        ASSERT_GT(count, 0);
        EXPECT_EQ(std::string_view(buffer.data(), static_cast<std::size_t>(count)), expected);
    }
}

TEST(StandardOutputStream, CompletesInterruptedAndShortWrites) {
    std::string written;
    int calls = 0;
    StandardOutputStream stream(-1, [&](int, const void* bytes, std::size_t) -> ssize_t {
        if (++calls % 3 == 0) {
            errno = EINTR;
            return -1;
        }
        written += *static_cast<const char*>(bytes);
        return 1;
    });
    stream.line("a line in pieces");
    EXPECT_EQ(written, "a line in pieces\n");
}

TEST(StandardOutputStream, WaitsForASlowReader) {
    Pipe pipe;
    ASSERT_EQ(fcntl(pipe.writing.get(), F_SETFL, O_NONBLOCK), 0);
    const std::string text(1'000'000, 'x');
    std::thread writer([&] {
        StandardOutputStream(pipe.writing.get()).line(text);
        pipe.writing = Descriptor(-1);
    });
    std::string received;
    std::array<char, 4096> buffer{};
    for (ssize_t count = 1; count > 0;) {
        count = read(pipe.reading.get(), buffer.data(), buffer.size());
        received.append(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    writer.join();
    EXPECT_EQ(received, text + "\n");
}

TEST(StandardOutputStream, GoesOnWhenNobodyReads) {
    const auto former = std::signal(SIGPIPE, SIG_IGN);
    Pipe pipe;
    pipe.reading = Descriptor(-1);
    StandardOutputStream stream(pipe.writing.get());
    stream.line("unheard");
    EXPECT_EQ(errno, EPIPE);
    stream.line("unheard too");
    EXPECT_TRUE(stream.hasFailed());
    std::signal(SIGPIPE, former);
}

TEST(StandardOutputStream, GoesOnWhenTheDiskIsFull) {
    const Descriptor full(open("/dev/full", O_WRONLY | O_CLOEXEC));
    ASSERT_TRUE(full);
    StandardOutputStream stream(full.get());
    stream.line("lost");
    EXPECT_EQ(errno, ENOSPC);
    EXPECT_TRUE(stream.hasFailed());
}

}  // namespace
}  // namespace thermopix
