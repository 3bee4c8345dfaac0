#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "system/Platform.h"

namespace thermopix {
namespace {

bool isWritten(int descriptor) {
    return ::write(descriptor, "x", 1) == 1;
}

/// What `check` says in a process that closes these numbers first.
template <typename Check>
bool holdsWithout(const std::vector<int>& streams, Check check) {
    const pid_t child = ::fork();
    if (child == 0) {
        for (const int stream : streams) {
            ::close(stream);
        }
        occupyStandardStreams();
        ::_exit(check() ? 0 : 1);
    }
    int status = -1;
    return ::waitpid(child, &status, 0) == child && status == 0;
}

TEST(StandardStreams, ThatAreClosedTakeNothingAndGiveNothing) {
    for (const auto& closed : std::vector<std::vector<int>>{{0}, {1}, {2}, {0, 2}, {1, 2}, {0, 1, 2}}) {
        EXPECT_TRUE(holdsWithout(closed, [&closed] {
            char byte = 0;
            for (const int stream : closed) {
                if (isWritten(stream) || errno != EBADF || ::read(stream, &byte, 1) != 0) {
                    return false;
                }
            }
            const int next = ::dup(STDIN_FILENO);
            return next > STDERR_FILENO;
        }));
    }
}

TEST(StandardStreams, ThatAreOpenStayWhatTheyAre) {
    EXPECT_TRUE(holdsWithout({}, [] {
        int ends[2] = {-1, -1};
        if (::pipe(ends) != 0 || ::dup2(ends[1], STDOUT_FILENO) < 0) {
            return false;
        }
        occupyStandardStreams();
        char byte = 0;
        return isWritten(STDOUT_FILENO) && ::read(ends[0], &byte, 1) == 1 && byte == 'x';
    }));
}

}  // namespace
}  // namespace thermopix
