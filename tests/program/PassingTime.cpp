// Linked into the program, lets a test make hours pass in it: its clocks are ahead by the seconds, a 64-bit number, in
// the file that THERMOPIX_TEST_CLOCK names. No wait of its main loop is long, so that it notices.
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <ctime>

namespace {

constexpr int longestWaitInMilliseconds = 50;

const volatile std::int64_t* openAhead() {
    static constexpr std::int64_t none = 0;
    const char* const path = std::getenv("THERMOPIX_TEST_CLOCK");
    const int file = path == nullptr ? -1 : open(path, O_RDONLY | O_CLOEXEC);
    void* const memory = mmap(nullptr, sizeof none, PROT_READ, MAP_SHARED, file, 0);
    close(file);
    return memory == MAP_FAILED ? &none : static_cast<const volatile std::int64_t*>(memory);
}

}  // namespace

// The names of the parameters are not those of every libc.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)

extern "C" int clock_gettime(clockid_t clock, timespec* time) noexcept {
    static const volatile std::int64_t* const ahead = openAhead();
    const auto result = syscall(SYS_clock_gettime, clock, time);
    if (result == 0 && (clock == CLOCK_MONOTONIC || clock == CLOCK_REALTIME)) {
        time->tv_sec += *ahead;
    }
    return static_cast<int>(result);
}

extern "C" int poll(pollfd* descriptors, nfds_t count, int timeout) {
    const int shortened = timeout < 0 ? longestWaitInMilliseconds : std::min(timeout, longestWaitInMilliseconds);
    timespec wait{0, shortened * 1'000'000L};
    return static_cast<int>(syscall(SYS_ppoll, descriptors, count, &wait, nullptr, 0));
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)
