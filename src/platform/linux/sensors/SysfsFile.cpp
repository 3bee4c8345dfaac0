#include "platform/linux/sensors/SysfsFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <utility>

namespace thermopix {

int FileAccess::open(const std::string& path) {
    return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
}

ssize_t FileAccess::readFromStart(int descriptor, std::span<char> buffer) {
    ssize_t count = 0;
    do {
        count = ::pread(descriptor, buffer.data(), buffer.size(), 0);
    } while (count < 0 && errno == EINTR);
    return count;
}

FileAccess& systemFileAccess() {
    static FileAccess access;
    return access;
}

SysfsFile::SysfsFile(FileAccess& access, const std::string& path) : access_(&access), descriptor_(access.open(path)) {}

SysfsFile::SysfsFile(SysfsFile&& other) noexcept
    : access_(other.access_), descriptor_(std::exchange(other.descriptor_, -1)) {}

SysfsFile& SysfsFile::operator=(SysfsFile&& other) noexcept {
    std::swap(access_, other.access_);
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

SysfsFile::~SysfsFile() {
    if (isOpen()) {
        ::close(descriptor_);
    }
}

std::optional<std::string_view> SysfsFile::read(std::span<char> buffer) const {
    if (!isOpen()) {
        return std::nullopt;
    }
    const ssize_t count = access_->readFromStart(descriptor_, buffer);
    if (count < 0) {
        return std::nullopt;
    }
    return std::string_view(buffer.data(), static_cast<std::size_t>(count));
}

std::optional<std::int64_t> SysfsFile::readInteger() const {
    std::array<char, 32> buffer;  // longer than any 64-bit number, so that what is cut off is no number either
    const auto text = read(buffer);
    return text && text->size() < buffer.size() ? parseSysfsInteger(*text) : std::nullopt;
}

std::optional<std::int64_t> parseSysfsInteger(std::string_view text) {
    if (text.ends_with('\n')) {
        text.remove_suffix(1);
    }
    std::int64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [parsed, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && parsed == end ? std::optional(value) : std::nullopt;
}

}  // namespace thermopix
