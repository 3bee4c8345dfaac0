#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "fakes/RecordingLog.h"
#include "platform/linux/sensors/NvidiaCards.h"
#include "platform/linux/sensors/SysfsMachine.h"

namespace thermopix {

/// A clock that a test sets.
class SetClock final : public MonotonicClock {
public:
    [[nodiscard]] std::chrono::nanoseconds now() const override {
        time += step;
        return time;
    }

    mutable std::chrono::nanoseconds time = std::chrono::hours(1);
    /// How much time passes whenever it is asked for.
    std::chrono::nanoseconds step{};
};

/// A machine with a processor and one card of the closed driver, the real program that reads it, and a stand-in for the
/// library, which does what the test says.
class NvidiaStage : public testing::Test {
protected:
    NvidiaStage() {
        while (::wait(nullptr) > 0) {  // for those that an earlier test has ended
        }
        ::setenv("LD_LIBRARY_PATH", THERMOPIX_NVML_STAND_IN, 1);
        ::setenv("THERMOPIX_NVML_STAND_IN", standIn.path().c_str(), 1);
        ::mkfifo(standIn.path("held").c_str(), 0600);
        tree.addMonitor(0, "devices/platform/coretemp.0", "coretemp", {{"Core 0", "41000"}, {"Core 1", "42000"}});
        addCard("0000:01:00.0", "0x030000", "active\n");
    }
    ~NvidiaStage() override {
        ::unsetenv("LD_LIBRARY_PATH");
        ::unsetenv("THERMOPIX_NVML_STAND_IN");
    }

    void addCard(const std::string& address, std::string_view kind, std::string_view status) const {
        const auto device = "devices/pci0000:00/" + address;
        tree.write(device + "/vendor", "0x10de\n");
        tree.write(device + "/class", std::string(kind) + "\n");
        tree.write(device + "/power/runtime_status", status);
        tree.link("bus/pci/devices/" + address, device);
    }
    void setStatus(const std::string& address, std::string_view status) const {
        tree.write("devices/pci0000:00/" + address + "/power/runtime_status", status);
    }

    /// What the library does from now on.
    void letLibrary(std::string_view does) const { standIn.write("does", does); }

    /// How often the library has been called so.
    [[nodiscard]] std::ptrdiff_t calls(const std::string& call) const {
        std::istringstream all(standIn.read("calls"));
        std::ptrdiff_t count = 0;
        for (std::string line; std::getline(all, line);) {
            count += line == call ? 1 : 0;
        }
        return count;
    }

    /// Waits until the process has ended.
    [[nodiscard]] static bool isGone() {
        siginfo_t ended{};
        return ::waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT) == 0 || errno == ECHILD;
    }

    [[nodiscard]] static bool isRunning() {
        siginfo_t ended{};
        return ::waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT | WNOHANG) == 0 && ended.si_pid == 0;
    }

    /// Waits until the library is where it is held, and lets it go on.
    void release() const { ::close(::open(standIn.path("held").c_str(), O_WRONLY)); }

    /// Waits until the process has something to say, or has ended.
    [[nodiscard]] bool isAnswered() const {
        pollfd watched{.fd = socket, .events = POLLIN, .revents = 0};
        return ::poll(&watched, 1, -1) == 1;
    }

    TemporaryTree tree;
    TemporaryFolder standIn;
    RecordingLog log;
    SetClock clock;
    std::optional<std::filesystem::path> program = THERMOPIX_NVIDIA_SENSORS;
    /// Of the newest process.
    int socket = -1;
    NvidiaCards cards{{.find = [this] { return program; },
                       .start =
                           [this](const auto& path) {
                               auto process = NvidiaProcess::start(path);
                               socket = process ? process->socket() : -1;
                               return process;
                           }},
                      clock,
                      log};
};

}  // namespace thermopix
