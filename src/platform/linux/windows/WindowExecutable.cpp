#include "platform/linux/windows/WindowExecutable.h"

#include <system_error>

#include "messages/WindowProtocol.h"
#include "platform/linux/files/CompanionProgram.h"

namespace thermopix {

std::optional<std::filesystem::path> windowExecutable(const std::filesystem::path& program,
                                                      const EnvironmentVariables& variables) {
    if (const auto chosen = variables.find("THERMOPIX_WINDOWS"); chosen != variables.end()) {
        return isProgram(chosen->second) ? std::optional<std::filesystem::path>(chosen->second) : std::nullopt;
    }
    return companionProgram(program.parent_path(), WindowProtocol::executable);
}

std::filesystem::path runningProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

}  // namespace thermopix
