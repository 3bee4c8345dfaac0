// Preloaded into a GLib program, lets it live through many timer wake-ups at once, so that they can be counted apart
// from its start: when the main thread has nothing to do, the monotonic clock jumps to the end of its wait. The
// program itself runs unchanged, one turn of its loop and one poll for each wake-up.
//
// In the environment: BENCH_WAKEUPS, how many wake-ups are measured, after BENCH_WARMUP others; BENCH_QUIET, the
// milliseconds without an event after which the program counts as started; BENCH_INPUT, a file of which the first
// bytes change to and fro between BENCH_VALUES ("A,B", of one length) at each jump.
//
// The measured stretch lies between two attempts to reach the files "bench:begin" and "bench:end", for whoever traces
// system calls; under callgrind the counters start at zero there and are dumped. The process ends with status 0.

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/mman.h>
#include <unistd.h>
#include <valgrind/callgrind.h>

#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

template <typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

long setting(const char* name, long standard) {
    const char* const text = std::getenv(name);
    return text == nullptr ? standard : std::atol(text);
}

constexpr long nanosecondsPerMillisecond = 1'000'000;
constexpr long nanosecondsPerSecond = 1'000'000'000;

long long jumped = 0;  // nanoseconds

const pthread_t mainThread = pthread_self();

/// The file that changes, mapped so that a change is no system call.
class Input {
public:
    Input() {
        const char* const path = std::getenv("BENCH_INPUT");
        const char* const values = std::getenv("BENCH_VALUES");
        if (path == nullptr || values == nullptr) {
            return;
        }
        values_ = values;
        length_ = std::strcspn(values, ",");
        const int file = open(path, O_RDWR | O_CLOEXEC);
        void* const memory = mmap(nullptr, length_, PROT_WRITE, MAP_SHARED, file, 0);
        close(file);
        if (memory == MAP_FAILED) {
            std::abort();
        }
        bytes_ = static_cast<char*>(memory);
    }

    void change() {
        if (bytes_ != nullptr) {
            isSecond_ = !isSecond_;
            std::memcpy(bytes_, isSecond_ ? values_ + length_ + 1 : values_, length_);
        }
    }

private:
    char* bytes_ = nullptr;
    const char* values_ = nullptr;
    std::size_t length_ = 0;
    bool isSecond_ = false;
};

using Poll = int(pollfd*, nfds_t, int);

int waitInJumps(Poll* realPoll, pollfd* descriptors, nfds_t count, int timeout) {
    static const long warmUp = setting("BENCH_WARMUP", 10);
    static const long measured = setting("BENCH_WAKEUPS", 100);
    static const int quiet = static_cast<int>(setting("BENCH_QUIET", 500));
    static Input input;
    static bool isStarted = false;
    static long wakeUps = 0;

    const int ready = realPoll(descriptors, count, isStarted ? 0 : quiet);
    if (ready != 0) {
        return ready;
    }
    isStarted = true;
    if (wakeUps == warmUp + measured) {
        // What other threads were handed belongs to the measured stretch.
        realPoll(nullptr, 0, quiet);
        access("bench:end", F_OK);
        CALLGRIND_DUMP_STATS;
        _exit(0);
    }
    if (wakeUps == warmUp) {
        realPoll(nullptr, 0, quiet);
        access("bench:begin", F_OK);
        CALLGRIND_ZERO_STATS;
    }
    ++wakeUps;
    input.change();
    jumped += timeout * nanosecondsPerMillisecond;
    return 0;
}

}  // namespace

extern "C" int poll(pollfd* descriptors, nfds_t count, int timeout) {
    static auto* const realPoll = next<Poll>("poll");
    if (timeout <= 0 || pthread_equal(pthread_self(), mainThread) == 0) {
        return realPoll(descriptors, count, timeout);
    }
    return waitInJumps(realPoll, descriptors, count, timeout);
}

extern "C" int clock_gettime(clockid_t clock, timespec* time) noexcept {
    static auto* const realClock = next<int(clockid_t, timespec*)>("clock_gettime");
    const int result = realClock(clock, time);
    if (result == 0 && clock == CLOCK_MONOTONIC) {
        const long long nanoseconds = time->tv_nsec + jumped;
        time->tv_sec += nanoseconds / nanosecondsPerSecond;
        time->tv_nsec = nanoseconds % nanosecondsPerSecond;
    }
    return result;
}
