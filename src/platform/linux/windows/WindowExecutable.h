#pragma once

#include <filesystem>
#include <optional>

#include "app/Platform.h"

namespace thermopix {

/// The executable of the window process: the one that `THERMOPIX_WINDOWS` names, else the one beside `program`, else in
/// "lib/thermopix" or "libexec/thermopix" beside the folder of `program`. None when there is no such program.
[[nodiscard]] std::optional<std::filesystem::path> windowExecutable(const std::filesystem::path& program,
                                                                    const EnvironmentVariables& variables);

/// Where the running program is.
[[nodiscard]] std::filesystem::path runningProgram();

}  // namespace thermopix
