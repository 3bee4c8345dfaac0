#include "platform/linux/files/FileUserDefaultsDatabases.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/linux/files/FileUserDefaults.h"

namespace thermopix {

namespace {

/// Whether the folder is there, or can be made, as an entry of `parent` and of nothing else.
bool isFolderWithin(const std::filesystem::path& parent, const std::filesystem::path& folder) {
    std::error_code error;
    if (std::filesystem::symlink_status(folder, error).type() == std::filesystem::file_type::not_found) {
        return true;
    }
    const auto realParent = std::filesystem::canonical(parent, error);
    if (error) {
        return false;
    }
    const auto realFolder = std::filesystem::canonical(folder, error);
    if (error || !std::filesystem::is_directory(realFolder, error) || error) {
        return false;
    }
    return realFolder != realParent && realFolder.native().starts_with((realParent / "").native());
}

std::string homeFromUserDatabase() {
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, 16384> buffer{};
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr ||
        found->pw_dir == nullptr) {
        return {};
    }
    return found->pw_dir;
}

}  // namespace

FileUserDefaultsDatabases::FileUserDefaultsDatabases(std::string folder, DiagnosticLog& log)
    : folder_(std::move(folder)), log_(log), standard_(std::make_shared<FileUserDefaults>(folder_, log)) {}

std::shared_ptr<UserDefaults> FileUserDefaultsDatabases::suite(std::string_view name) {
    if (folder_.empty() || !isPlainFileName(name)) {
        return nullptr;
    }
    const auto suites = std::filesystem::path(folder_) / "suites";
    const auto folder = suites / name;
    return isFolderWithin(suites, folder) ? std::make_shared<FileUserDefaults>(folder.native(), log_) : nullptr;
}

std::string settingsFolder(const EnvironmentVariables& variables) {
    const auto absolute = [&](std::string_view name) {
        const auto text = textOf(variables, name);
        return text.starts_with('/') ? std::string(text) : std::string();
    };
    std::filesystem::path base = absolute("XDG_CONFIG_HOME");
    if (base.empty()) {
        std::string home = absolute("HOME");
        if (home.empty()) {
            home = homeFromUserDatabase();
        }
        if (!home.starts_with('/')) {
            return {};
        }
        base = std::filesystem::path(home) / ".config";
    }
    return (base / "thermopix").native();
}

}  // namespace thermopix
