#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace thermopix {

/// Opens and reads files of the machine. Tests override it to count reads and to make them fail.
class FileAccess {
public:
    virtual ~FileAccess() = default;

    /// A descriptor for reading that is not inherited by other programs; -1 on failure. Files leave the rest of the
    /// process some descriptors: the limit is raised as far as may be, and then no more are opened (EMFILE).
    [[nodiscard]] virtual int open(const std::string& path);

    /// One positioned read from the start of the file; the number of bytes, or -1 with `errno`.
    [[nodiscard]] virtual ssize_t readFromStart(int descriptor, std::span<char> buffer);
};

[[nodiscard]] FileAccess& systemFileAccess();

/// A small file of sysfs that stays open; each reading is one positioned read and allocates nothing. Where there are
/// no descriptors left it is opened for each reading.
class SysfsFile {
public:
    SysfsFile() = default;

    /// Open, or not when the file cannot be opened. `access` outlives the file.
    SysfsFile(FileAccess& access, const std::string& path);
    SysfsFile(SysfsFile&& other) noexcept;
    SysfsFile& operator=(SysfsFile&& other) noexcept;
    SysfsFile(const SysfsFile&) = delete;
    SysfsFile& operator=(const SysfsFile&) = delete;
    ~SysfsFile();

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0 || !path_.empty(); }

    /// The content now, cut off at the end of the buffer; none, with `errno`, when reading fails.
    [[nodiscard]] std::optional<std::string_view> read(std::span<char> buffer) const;

    /// The content as a whole number by the rules of `parseSysfsInteger`.
    [[nodiscard]] std::optional<std::int64_t> readInteger() const;

private:
    [[nodiscard]] std::optional<std::string_view> readFrom(int descriptor, std::span<char> buffer) const;

    FileAccess* access_ = nullptr;
    int descriptor_ = -1;
    /// Set where the file cannot stay open.
    std::string path_;
};

/// An optional minus, digits and at most one line feed; none for anything else and for what 64 bits cannot hold.
[[nodiscard]] std::optional<std::int64_t> parseSysfsInteger(std::string_view text);

}  // namespace thermopix
