#pragma once

#include <filesystem>
#include <string_view>

namespace thermopix {

/// A file of the tests in the source tree, by its path below `tests/`.
[[nodiscard]] std::filesystem::path testFile(std::string_view path);

}  // namespace thermopix
