#include "platform/linux/machine/MachineFactFiles.h"

#include <system_error>

namespace thermopix {

namespace {

bool isThisMachine(const std::filesystem::path& root) {
    return (root / "").lexically_normal() == "/sys/";
}

std::filesystem::path releaseFile() {
    std::error_code error;
    return std::filesystem::exists("/etc/os-release", error) ? "/etc/os-release" : "/usr/lib/os-release";
}

}  // namespace

MachineFactFiles machineFactFiles(const std::filesystem::path& root) {
    if (isThisMachine(root)) {
        return {"/proc/cpuinfo", releaseFile(), "/proc/sys/kernel/osrelease"};
    }
    const auto captured = root / "capture";
    return {captured / "cpuinfo", captured / "os-release", captured / "osrelease"};
}

}  // namespace thermopix
