#include "platform/linux/files/CompanionProgram.h"

#include <unistd.h>

#include <system_error>

namespace thermopix {

std::filesystem::path runningProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

bool isProgram(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && ::access(path.c_str(), X_OK) == 0;
}

std::optional<std::filesystem::path> companionProgram(const std::filesystem::path& folder, std::string_view name) {
    for (const char* place : {".", "../libexec/thermopix", "../lib/thermopix"}) {
        const auto candidate = (folder / place / name).lexically_normal();
        if (isProgram(candidate)) {
            return candidate;
        }
    }
    return std::nullopt;
}

}  // namespace thermopix
