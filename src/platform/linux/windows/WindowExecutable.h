#pragma once

#include <filesystem>
#include <optional>

#include "system/Platform.h"

namespace thermopix {

/// The executable of the window process: the one that `THERMOPIX_WINDOWS` names, else the one that comes with
/// `program`. None when there is no such program.
[[nodiscard]] std::optional<std::filesystem::path> windowExecutable(const std::filesystem::path& program,
                                                                    const EnvironmentVariables& variables);

/// Whether there is a display for windows.
[[nodiscard]] bool hasDisplay(const EnvironmentVariables& variables);

}  // namespace thermopix
