#pragma once

#include <set>
#include <string>
#include <system_error>

#include "platform/posix/WriteAll.h"
#include "system/DiagnosticLog.h"
#include "system/UserDefaults.h"

namespace thermopix {

/// A folder with one file a key, readable by its owner only. A write replaces the file at once and durably, through
/// a symbolic link that the user put in its place. Main thread; other processes may use the folder too.
class FileUserDefaults final : public UserDefaults {
public:
    /// Made, with its parents, by the first write; an empty path holds nothing. `log` outlives the object.
    FileUserDefaults(std::string folder, DiagnosticLog& log);
    FileUserDefaults(std::string folder, DiagnosticLog& log, WriteFunction write);

    /// Also none for a key that is no plain file name, and for a file of more than 16 MiB.
    [[nodiscard]] std::optional<std::string> data(std::string_view key) const override;

    bool setData(std::string_view key, std::string_view bytes) override;

private:
    [[nodiscard]] bool isStorable(std::string_view key) const;
    [[nodiscard]] std::string path(std::string_view key) const;
    void complain(std::string_view action, std::string_view key, const std::error_code& cause) const;

    std::string folder_;
    DiagnosticLog& log_;
    WriteFunction write_;
    /// What was logged since the last success, so that each cause is told once.
    mutable std::set<std::string, std::less<>> complaints_;
};

/// Whether the text can name an entry of a folder: not empty, no "." or "..", no slash, no NUL, at most 255 bytes.
[[nodiscard]] bool isPlainFileName(std::string_view name);

}  // namespace thermopix
