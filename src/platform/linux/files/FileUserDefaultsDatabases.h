#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "system/DiagnosticLog.h"
#include "system/Platform.h"
#include "system/UserDefaults.h"

namespace thermopix {

/// The settings' folder: the standard database in it, each suite in a folder of its own under `suites/`.
class FileUserDefaultsDatabases final : public UserDefaultsDatabases {
public:
    /// `log` outlives the databases.
    FileUserDefaultsDatabases(std::string folder, DiagnosticLog& log);

    [[nodiscard]] std::shared_ptr<UserDefaults> standard() override { return standard_; }

    /// Null for a name that is no plain file name, and for an entry that is no folder or lies outside.
    [[nodiscard]] std::shared_ptr<UserDefaults> suite(std::string_view name) override;

private:
    std::string folder_;
    DiagnosticLog& log_;
    std::shared_ptr<UserDefaults> standard_;
};

/// Where the program keeps its settings: "thermopix" under `XDG_CONFIG_HOME` if that is absolute, else under
/// ".config" of `HOME`, else of the home that the user database names. Empty when there is none.
[[nodiscard]] std::string settingsFolder(const EnvironmentVariables& variables);

}  // namespace thermopix
