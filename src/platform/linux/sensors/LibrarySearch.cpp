#include "platform/linux/sensors/LibrarySearch.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>

namespace thermopix {

namespace {

bool isIn(const std::filesystem::path& folder, const std::string& library) {
    std::error_code error;
    return std::filesystem::exists(folder / library, error);
}

/// The cache names the file of each library; a name ends with a zero.
bool isNamedIn(const std::filesystem::path& cache, const std::string& library) {
    std::ifstream file(cache, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    return bytes.find("/" + library + std::string(1, '\0')) != std::string::npos;
}

}  // namespace

bool isLoadable(const std::string& library, const std::filesystem::path& cache) {
    const char* const folders = std::getenv("LD_LIBRARY_PATH");  // NOLINT(concurrency-mt-unsafe): nothing sets it
    std::string_view rest = folders == nullptr ? "" : folders;
    while (!rest.empty()) {
        const auto folder = rest.substr(0, rest.find_first_of(":;"));
        if (isIn(folder, library)) {
            return true;
        }
        rest.remove_prefix(std::min(folder.size() + 1, rest.size()));
    }
    if (isNamedIn(cache, library)) {
        return true;
    }
    constexpr std::array systemFolders{"/lib64", "/usr/lib64", "/lib", "/usr/lib"};
    return std::any_of(systemFolders.begin(), systemFolders.end(),
                       [&](const char* folder) { return isIn(folder, library); });
}

}  // namespace thermopix
