#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace thermopix {

/// Walking a tree of sysfs while looking for devices. Nothing here fails: what cannot be read is absent.

/// The tree to read: the environment's THERMOPIX_SYSFS_ROOT, for instance a captured machine, else "/sys".
[[nodiscard]] std::filesystem::path sysfsRoot();

/// An entry of a folder whose name is `prefix`, a number and `suffix`.
struct NumberedEntry {
    int number;
    std::filesystem::path path;
};

/// The numbered entries of a folder, by rising number.
[[nodiscard]] std::vector<NumberedEntry> numberedEntries(const std::filesystem::path& folder, std::string_view prefix,
                                                         std::string_view suffix = {});

/// Every entry of a folder, by name.
[[nodiscard]] std::vector<std::filesystem::path> entries(const std::filesystem::path& folder);

/// The first line of a file without the blanks around it; none when the file cannot be read or the line is blank.
[[nodiscard]] std::optional<std::string> readLine(const std::filesystem::path& file);

/// The path with every link followed; none when it leads nowhere.
[[nodiscard]] std::optional<std::filesystem::path> realPath(const std::filesystem::path& path);

}  // namespace thermopix
