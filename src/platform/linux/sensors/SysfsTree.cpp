#include "platform/linux/sensors/SysfsTree.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>

#include "base/Unicode.h"
#include "platform/linux/sensors/SysfsFile.h"

namespace thermopix {

namespace {

constexpr std::size_t longestLine = 256;

std::optional<int> numberBetween(std::string_view name, std::string_view prefix, std::string_view suffix) {
    if (name.size() <= prefix.size() + suffix.size() || !name.starts_with(prefix) || !name.ends_with(suffix)) {
        return std::nullopt;
    }
    name.remove_prefix(prefix.size());
    name.remove_suffix(suffix.size());
    int number = 0;
    const auto [parsed, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    const bool isNumber = error == std::errc() && parsed == name.data() + name.size() && number >= 0;
    return isNumber ? std::optional(number) : std::nullopt;
}

}  // namespace

std::filesystem::path sysfsRoot() {
    const char* const root = std::getenv("THERMOPIX_SYSFS_ROOT");  // NOLINT(concurrency-mt-unsafe): nothing sets it
    return root != nullptr && *root != '\0' ? root : "/sys";
}

std::vector<NumberedEntry> numberedEntries(const std::filesystem::path& folder, std::string_view prefix,
                                           std::string_view suffix) {
    std::vector<NumberedEntry> found;
    for (auto& path : entries(folder)) {
        if (const auto number = numberBetween(path.filename().native(), prefix, suffix)) {
            found.push_back({*number, std::move(path)});
        }
    }
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.number < b.number; });
    return found;
}

std::vector<std::filesystem::path> entries(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> found;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        found.push_back(entry->path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::optional<std::string> readLine(const std::filesystem::path& file) {
    std::array<char, longestLine> buffer;
    const auto text = SysfsFile(systemFileAccess(), file).read(buffer);
    if (!text) {
        return std::nullopt;
    }
    const auto line = trimmed(text->substr(0, text->find('\n')));
    return line.empty() ? std::nullopt : std::optional<std::string>(line);
}

std::optional<std::filesystem::path> realPath(const std::filesystem::path& path) {
    std::error_code error;
    auto real = std::filesystem::canonical(path, error);
    return error ? std::nullopt : std::optional(std::move(real));
}

}  // namespace thermopix
