#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/linux/files/FileUserDefaults.h"
#include "platform/linux/files/SettingsWriter.h"
#include "system/Platform.h"
#include "system/UserDefaults.h"

namespace thermopix {

/// The settings' folder: the standard database in it, each suite in a folder of its own under `suites/`; one writer
/// for all. Main thread.
class FileUserDefaultsDatabases final : public UserDefaultsDatabases {
public:
    FileUserDefaultsDatabases(std::string folder, SettingsWriter::Services services, FileOperations operations = {});

    [[nodiscard]] std::shared_ptr<UserDefaults> standard() override { return standard_; }

    /// Null for a name that is no plain file name, and for an entry that is no folder or lies outside.
    [[nodiscard]] std::shared_ptr<UserDefaults> suite(std::string_view name) override;

    /// From now on it is the user who changes something.
    void endLaunch();

private:
    std::string folder_;
    std::shared_ptr<SettingsWriter> writer_;
    std::shared_ptr<FileUserDefaults> standard_;
    std::map<std::string, std::shared_ptr<FileUserDefaults>, std::less<>> suites_;
};

/// Where the user's configuration is: `XDG_CONFIG_HOME` if that is absolute, else ".config" of `HOME`, else of the home
/// that the user database names. Empty when there is none.
[[nodiscard]] std::string configurationFolder(const EnvironmentVariables& variables);

/// Where the program keeps its settings: "thermopix" in that folder. Empty when there is none.
[[nodiscard]] std::string settingsFolder(const EnvironmentVariables& variables);

}  // namespace thermopix
