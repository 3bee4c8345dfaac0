#pragma once

#include <filesystem>
#include <string>

namespace thermopix {

/// Whether the loader would find a shared library of this name for a program that this one starts: in the folders of
/// LD_LIBRARY_PATH, in the loader's cache or in the system's own folders. Nothing is loaded.
[[nodiscard]] bool isLoadable(const std::string& library, const std::filesystem::path& cache = "/etc/ld.so.cache");

}  // namespace thermopix
