// Reads graphics cards through NVIDIA's library, for the program at the other end of standard input. Whatever the
// library does, hang or crash, happens here and to nobody else.
#include <dlfcn.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <ctime>

#include "platform/linux/nvidia/NvidiaProtocol.h"

namespace {

using namespace thermopix::NvidiaProtocol;

constexpr int success = 0;         // NVML_SUCCESS
constexpr int dieTemperature = 0;  // NVML_TEMPERATURE_GPU

template <typename Function>
bool lookUp(void* handle, const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(::dlsym(handle, name));
    return function != nullptr;
}

/// The library, loaded and initialised for the first question. It is never shut down, which could hang: the end of
/// this process gives back all that it holds.
class Library {
public:
    [[nodiscard]] Outcome read(const char* pciAddress, unsigned& celsius) {
        if (const Outcome outcome = begin(); outcome != Outcome::read) {
            return outcome;
        }
        void* device = nullptr;
        return deviceByPciAddress_(pciAddress, &device) == success &&
                       temperature_(device, dieTemperature, &celsius) == success
                   ? Outcome::read
                   : Outcome::notRead;
    }

private:
    [[nodiscard]] Outcome begin() {
        if (hasBegun_) {
            return Outcome::read;
        }
        void* const handle = ::dlopen(library, RTLD_LAZY | RTLD_LOCAL);
        int (*initialise)() = nullptr;
        if (handle == nullptr || !lookUp(handle, "nvmlInit_v2", initialise) ||
            !lookUp(handle, "nvmlDeviceGetHandleByPciBusId_v2", deviceByPciAddress_) ||
            !lookUp(handle, "nvmlDeviceGetTemperature", temperature_)) {
            return Outcome::libraryMissing;
        }
        hasBegun_ = initialise() == success;
        return hasBegun_ ? Outcome::read : Outcome::libraryFails;
    }

    bool hasBegun_ = false;
    int (*deviceByPciAddress_)(const char* address, void** device) = nullptr;
    int (*temperature_)(void* device, int sensor, unsigned* celsius) = nullptr;
};

std::int64_t monotonicNanoseconds() {
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * std::int64_t{1'000'000'000} + now.tv_nsec;
}

/// Answers until the input ends; false when it ends in any other way. On its own, since a stack is checked where a
/// function returns, and main() does not.
[[gnu::noinline]] bool serve() {
    Library nvidia;
    Question question;
    ssize_t received = 0;
    while ((received = ::recv(STDIN_FILENO, &question, sizeof question, 0)) == ssize_t{sizeof question}) {
        question.pciAddress.back() = '\0';
        unsigned celsius = 0;
        Answer answer{.number = question.number, .outcome = nvidia.read(question.pciAddress.data(), celsius)};
        answer.nanoseconds = monotonicNanoseconds();
        answer.celsius = celsius;
        if (::send(STDIN_FILENO, &answer, sizeof answer, MSG_NOSIGNAL) != ssize_t{sizeof answer}) {
            return false;
        }
    }
    return received == 0;
}

}  // namespace

int main() {
    // A library that hangs does not notice that the input has ended.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    // Without the library's own farewell.
    ::_exit(serve() ? 0 : 1);
}
