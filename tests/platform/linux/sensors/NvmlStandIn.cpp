// Stands in for NVIDIA's management library, which no build machine has, in a process that a test can only watch from
// outside. In the folder that THERMOPIX_NVML_STAND_IN names it writes down every call in `calls` and does
// what the line of that call says in `does`:
//   CALL hangs | crashes | fails | is held    the last until a test opens the pipe `held` for writing
//   temperature CELSIUS
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace {

constexpr int success = 0;
constexpr int unknown = 999;

std::string path(const char* name) {
    const char* const folder = std::getenv("THERMOPIX_NVML_STAND_IN");
    return std::string(folder == nullptr ? "." : folder) + "/" + name;
}

void write(const std::string& call) {
    std::ofstream(path("calls"), std::ios::app) << call << std::endl;
}

/// What is to be done in a call; empty when nothing is said of it. Hanging and crashing are done here.
std::string behaviour(const std::string& call) {
    std::ifstream does(path("does"));
    std::string line;
    while (std::getline(does, line)) {
        if (line.rfind(call + " ", 0) != 0) {
            continue;
        }
        auto what = line.substr(call.size() + 1);
        if (what == "is held") {
            ::close(::open(path("held").c_str(), O_RDONLY));
        } else if (what == "crashes") {
            std::abort();
        } else if (what == "hangs") {
            for (;;) {
                ::pause();
            }
        }
        return what;
    }
    return {};
}

int result(const std::string& call) {
    return behaviour(call) == "fails" ? unknown : success;
}

[[gnu::constructor]] void load() {
    write("load");
    static_cast<void>(behaviour("load"));
}

[[gnu::destructor]] void unload() {
    write("unload");
    static_cast<void>(behaviour("unload"));
}

std::string address;

}  // namespace

extern "C" {

int nvmlInit_v2();
int nvmlShutdown();
int nvmlDeviceGetHandleByPciBusId_v2(const char* pciAddress, void** device);
int nvmlDeviceGetTemperature(void* device, int sensor, unsigned* celsius);

int nvmlInit_v2() {
    write("initialise");
    return result("initialise");
}

int nvmlShutdown() {
    write("shut down");
    return result("shut down");
}

int nvmlDeviceGetHandleByPciBusId_v2(const char* pciAddress, void** device) {
    address = pciAddress;
    *device = &address;
    return result("look up");
}

int nvmlDeviceGetTemperature(void* device, int sensor, unsigned* celsius) {
    if (device != &address || sensor != 0) {
        return unknown;
    }
    write("temperature of " + address);
    auto what = behaviour("temperature");
    *celsius = what.empty() || what == "is held" ? 55 : static_cast<unsigned>(std::strtoul(what.c_str(), nullptr, 10));
    return what == "fails" ? unknown : success;
}
}
