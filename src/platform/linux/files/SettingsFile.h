#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/posix/WriteAll.h"

namespace thermopix {

/// The system calls that a test may have fail or wait.
struct FileOperations {
    WriteFunction write = ::write;
    std::function<int(int descriptor)> synchronize = ::fsync;
    /// One short wait for a lock.
    std::function<void()> pause;

    FileOperations();
};

struct ReadSettings {
    /// None when there is no file, and when it cannot be read.
    std::optional<std::string> bytes;
    std::error_code error;
};

/// Reads a settings file, without waiting where the name is a pipe's; a file that is too long is an error. Any thread.
[[nodiscard]] ReadSettings readSettingsFile(const std::string& path);

/// What happens to the file that is replaced.
enum class FormerFile { replaced, keptBeside };

struct ReplacedSettings {
    std::error_code error;
    /// Where the former file is now, if it is kept.
    std::string kept;
};

/// Puts the bytes in place of the file at once and durably, through a symbolic link that the user put there; makes the
/// folders, readable by their owner only. A former file that is to be kept becomes NAME.unreadable; there is one
/// already, then NAME.unreadable.newest. Waits for another writer a second at most. Any thread.
[[nodiscard]] ReplacedSettings replaceSettingsFile(const std::string& path, std::string_view bytes, FormerFile former,
                                                   const FileOperations& operations);

/// Whether the text can name an entry of a folder: not empty, no "." or "..", no slash, no NUL, at most 255 bytes.
[[nodiscard]] bool isPlainFileName(std::string_view name);

/// Whether files of that name are the writers' own, on the way to becoming another.
[[nodiscard]] bool isTemporaryName(std::string_view name);

}  // namespace thermopix
