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

FileUserDefaultsDatabases::FileUserDefaultsDatabases(std::string folder, SettingsWriter::Services services,
                                                     FileOperations operations)
    : folder_(std::move(folder)),
      writer_(std::make_shared<SettingsWriter>(std::move(services), std::move(operations))),
      standard_(std::make_shared<FileUserDefaults>(folder_, writer_)) {}

std::shared_ptr<UserDefaults> FileUserDefaultsDatabases::suite(std::string_view name) {
    if (folder_.empty() || !isPlainFileName(name)) {
        return nullptr;
    }
    const auto suites = std::filesystem::path(folder_) / "suites";
    const auto folder = suites / name;
    if (!isFolderWithin(suites, folder)) {
        return nullptr;
    }
    auto& suite = suites_[std::string(name)];
    if (!suite) {
        suite = std::make_shared<FileUserDefaults>(folder.native(), writer_);
    }
    return suite;
}

void FileUserDefaultsDatabases::endLaunch() {
    standard_->endLaunch();
    for (const auto& [name, suite] : suites_) {
        suite->endLaunch();
    }
}

std::string configurationFolder(const EnvironmentVariables& variables) {
    const auto absolute = [&](std::string_view name) {
        const auto text = textOf(variables, name);
        return text.starts_with('/') ? std::string(text) : std::string();
    };
    std::string configuration = absolute("XDG_CONFIG_HOME");
    if (!configuration.empty()) {
        return configuration;
    }
    std::string home = absolute("HOME");
    if (home.empty()) {
        home = homeFromUserDatabase();
    }
    return home.starts_with('/') ? (std::filesystem::path(home) / ".config").native() : std::string();
}

std::string settingsFolder(const EnvironmentVariables& variables) {
    const auto configuration = configurationFolder(variables);
    return configuration.empty() ? std::string() : (std::filesystem::path(configuration) / "thermopix").native();
}

}  // namespace thermopix
