#pragma once

#include <sys/types.h>

#include <span>
#include <string>

namespace thermopix {

/// Opens and reads files of the machine. Tests override it to count reads and to make them fail.
class FileAccess {
public:
    virtual ~FileAccess() = default;

    /// A descriptor for reading that is not inherited by other programs; -1 on failure.
    [[nodiscard]] virtual int open(const std::string& path);

    /// One positioned read from the start of the file; the number of bytes, or -1 with `errno`.
    [[nodiscard]] virtual ssize_t readFromStart(int descriptor, std::span<char> buffer);
};

[[nodiscard]] FileAccess& systemFileAccess();

}  // namespace thermopix
