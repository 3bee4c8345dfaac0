#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace thermopix {

/// The real file of the running program, also after an update has replaced it; empty where nothing tells.
[[nodiscard]] std::filesystem::path runningProgram();

/// Whether `path` is a file that this process may execute.
[[nodiscard]] bool isProgram(const std::filesystem::path& path);

/// The program called `name` that comes with the one in `folder`: beside it, else in "libexec/thermopix" or
/// "lib/thermopix" beside the folder. None when there is no such program.
[[nodiscard]] std::optional<std::filesystem::path> companionProgram(const std::filesystem::path& folder,
                                                                    std::string_view name);

}  // namespace thermopix
