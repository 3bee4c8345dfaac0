// Linked into the program, lets a test make hours pass in it: its clocks are ahead by the seconds, a 64-bit number, in
// the file that THERMOPIX_TEST_CLOCK names. A wait looks often whether its end has come by that clock.
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

constexpr std::int64_t longestLook = 50'000'000;

std::int64_t nanoseconds() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * std::int64_t{1'000'000'000} + time.tv_nsec;
}

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
    // Without an end there is nothing to look for: a wait that returned early would pass for one that failed.
    if (timeout < 0) {
        return static_cast<int>(syscall(SYS_ppoll, descriptors, count, nullptr, nullptr, 0));
    }
    const auto end = nanoseconds() + timeout * std::int64_t{1'000'000};
    for (;;) {
        const auto left = std::max<std::int64_t>(end - nanoseconds(), 0);
        timespec wait{0, std::min(left, longestLook)};
        const auto result = syscall(SYS_ppoll, descriptors, count, &wait, nullptr, 0);
        if (result != 0 || left == 0) {
            return static_cast<int>(result);
        }
    }
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)
