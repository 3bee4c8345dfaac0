#include "platform/linux/sensors/SysfsFile.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <utility>

namespace thermopix {

namespace {

/// As many descriptors stay free for buses, windows and whatever else the process opens.
constexpr int leftForOthers = 64;
/// No process does with more; some limits are in the thousands of millions.
constexpr rlim_t mostDescriptors = 65'536;

int openForReading(const std::string& path) {
    return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
}

bool leavesRoom(int descriptor) {
    rlimit limit{};
    return descriptor < leftForOthers || getrlimit(RLIMIT_NOFILE, &limit) != 0 ||
           static_cast<rlim_t>(descriptor) + leftForOthers < limit.rlim_cur;
}

void raiseLimit() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < mostDescriptors) {
        limit.rlim_cur = std::min(limit.rlim_max, mostDescriptors);
        setrlimit(RLIMIT_NOFILE, &limit);
    }
}

}  // namespace

int FileAccess::open(const std::string& path) {
    int descriptor = openForReading(path);
    if (descriptor < 0 ? errno != EMFILE : leavesRoom(descriptor)) {
        return descriptor;
    }
    raiseLimit();
    if (descriptor < 0) {
        descriptor = openForReading(path);
    }
    if (descriptor < 0 || leavesRoom(descriptor)) {
        return descriptor;
    }
    ::close(descriptor);
    errno = EMFILE;
    return -1;
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

SysfsFile::SysfsFile(FileAccess& access, const std::string& path) : access_(&access), descriptor_(access.open(path)) {
    if (descriptor_ < 0 && errno == EMFILE) {
        path_ = path;
    }
}

SysfsFile::SysfsFile(SysfsFile&& other) noexcept
    : access_(other.access_), descriptor_(std::exchange(other.descriptor_, -1)), path_(std::move(other.path_)) {}

SysfsFile& SysfsFile::operator=(SysfsFile&& other) noexcept {
    std::swap(access_, other.access_);
    std::swap(descriptor_, other.descriptor_);
    std::swap(path_, other.path_);
    return *this;
}

SysfsFile::~SysfsFile() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

std::optional<std::string_view> SysfsFile::read(std::span<char> buffer) const {
    if (descriptor_ >= 0) {
        return readFrom(descriptor_, buffer);
    }
    if (path_.empty()) {
        return std::nullopt;
    }
    const int opened = openForReading(path_);
    if (opened < 0) {
        return std::nullopt;
    }
    const auto content = readFrom(opened, buffer);
    ::close(opened);
    return content;
}

std::optional<std::string_view> SysfsFile::readFrom(int descriptor, std::span<char> buffer) const {
    const ssize_t count = access_->readFromStart(descriptor, buffer);
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
