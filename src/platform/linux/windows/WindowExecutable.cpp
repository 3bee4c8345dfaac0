#include "platform/linux/windows/WindowExecutable.h"

#include <unistd.h>

#include <system_error>

#include "messages/WindowProtocol.h"

namespace thermopix {

namespace {

bool isProgram(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && ::access(path.c_str(), X_OK) == 0;
}

}  // namespace

std::optional<std::filesystem::path> windowExecutable(const std::filesystem::path& program,
                                                      const EnvironmentVariables& variables) {
    if (const auto chosen = variables.find("THERMOPIX_WINDOWS"); chosen != variables.end()) {
        return isProgram(chosen->second) ? std::optional<std::filesystem::path>(chosen->second) : std::nullopt;
    }
    const std::filesystem::path folder = program.parent_path();
    for (const char* place : {".", "../lib/thermopix", "../libexec/thermopix"}) {
        const auto candidate = (folder / place / WindowProtocol::executable).lexically_normal();
        if (isProgram(candidate)) {
            return candidate;
        }
    }
    return std::nullopt;
}

std::filesystem::path runningProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

}  // namespace thermopix
