#include "platform/linux/windows/WindowExecutable.h"

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

bool hasDisplay(const EnvironmentVariables& variables) {
    return !textOf(variables, "WAYLAND_DISPLAY").empty() || !textOf(variables, "DISPLAY").empty();
}

}  // namespace thermopix
