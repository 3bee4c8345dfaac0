#include "platform/linux/files/FileUserDefaults.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <filesystem>
#include <utility>
#include <vector>

#include "platform/linux/files/Descriptor.h"

namespace thermopix {

namespace {

constexpr std::size_t maximumSize = 16U << 20U;
constexpr std::string_view temporaryPrefix = ".thermopix-new-";
constexpr mode_t privateFolder = S_IRWXU;
constexpr mode_t privateFile = S_IRUSR | S_IWUSR;

std::error_code lastError() {
    return {errno, std::generic_category()};
}

std::string joined(std::string_view folder, std::string_view name) {
    return fmt::format("{}{}{}", folder, folder.ends_with('/') ? "" : "/", name);
}

/// The folder part of a path, ready to be opened, and what follows it.
std::pair<std::string, std::string> split(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return {".", path};
    }
    return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

void sync(const std::string& folder) {
    const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    fsync(descriptor.get());
}

std::error_code makeFolders(const std::string& folder) {
    for (std::size_t end = folder.find('/', 1);; end = folder.find('/', end + 1)) {
        const std::string parent = folder.substr(0, end);
        const bool isNew = mkdir(parent.c_str(), privateFolder) == 0;
        const auto error = isNew ? std::error_code() : lastError();
        if (isNew) {
            sync(split(parent).first);
        } else if (access(parent.c_str(), F_OK) != 0) {
            return error;
        }
        if (end == std::string::npos) {
            return {};
        }
    }
}

/// Follows symbolic links, also to where no file is yet.
std::error_code followLinks(std::string& path) {
    constexpr int maximumLinks = 40;
    for (int i = 0; i < maximumLinks; ++i) {
        std::array<char, PATH_MAX> target{};
        const ssize_t length = readlink(path.c_str(), target.data(), target.size());
        if (length < 0) {
            return errno == EINVAL || errno == ENOENT ? std::error_code() : lastError();
        }
        const std::string_view next(target.data(), static_cast<std::size_t>(length));
        path = next.starts_with('/') ? std::string(next) : joined(split(path).first, next);
    }
    return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

/// Removes what writers that were interrupted left behind. The caller holds the folder's lock, as every writer
/// does that is still at work.
void removeLeftovers(const std::string& folder) {
    std::vector<std::filesystem::path> leftovers;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        if (entry->path().filename().native().starts_with(temporaryPrefix)) {
            leftovers.push_back(entry->path());
        }
    }
    for (const auto& leftover : leftovers) {
        unlink(leftover.c_str());
    }
}

struct TemporaryFile {
    std::string name;
    Descriptor descriptor;
};

TemporaryFile makeTemporaryFile(int folder) {
    constexpr int maximumAttempts = 100;
    for (int i = 0; i < maximumAttempts; ++i) {
        std::string name = fmt::format("{}{}-{}", temporaryPrefix, getpid(), i);
        Descriptor descriptor(
            openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, privateFile));
        if (descriptor || errno != EEXIST) {
            return {std::move(name), std::move(descriptor)};
        }
    }
    return {{}, Descriptor(-1)};
}

std::error_code replaceFile(std::string path, std::string_view bytes, const WriteFunction& write) {
    if (const auto error = followLinks(path)) {
        return error;
    }
    const auto [folderPath, name] = split(path);
    if (!isPlainFileName(name)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    const Descriptor folder(open(folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder) {
        return lastError();
    }
    struct stat former {};
    if (fstatat(folder.get(), name.c_str(), &former, AT_SYMLINK_NOFOLLOW) == 0 && !S_ISREG(former.st_mode)) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    // Released when the descriptor is closed, also by the death of the process. A folder that another writer holds,
    // or a file system without locks, is written all the same, under a temporary name that no one else uses.
    if (flock(folder.get(), LOCK_EX | LOCK_NB) == 0) {
        removeLeftovers(folderPath);
    }
    const TemporaryFile temporary = makeTemporaryFile(folder.get());
    if (!temporary.descriptor) {
        return lastError();
    }
    auto error = writeAll(temporary.descriptor.get(), bytes, write);
    if (!error && fsync(temporary.descriptor.get()) != 0) {
        error = lastError();
    }
    if (!error && renameat(folder.get(), temporary.name.c_str(), folder.get(), name.c_str()) != 0) {
        error = lastError();
    }
    if (error) {
        unlinkat(folder.get(), temporary.name.c_str(), 0);
        return error;
    }
    // The new bytes are in place; where the folder cannot be synchronised, only a power cut could still undo that.
    fsync(folder.get());
    return {};
}

struct ReadFile {
    std::optional<std::string> bytes;
    std::error_code error;
};

ReadFile readFile(const std::string& path) {
    // Without waiting, should the name be a pipe's.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file) {
        return {std::nullopt, errno == ENOENT ? std::error_code() : lastError()};
    }
    struct stat status {};
    if (fstat(file.get(), &status) != 0) {
        return {std::nullopt, lastError()};
    }
    if (!S_ISREG(status.st_mode)) {
        return {std::nullopt, std::make_error_code(std::errc::invalid_argument)};
    }
    std::string bytes;
    std::array<char, 4096> buffer{};
    for (;;) {
        const ssize_t count = read(file.get(), buffer.data(), buffer.size());
        if (count == 0) {
            return {std::move(bytes), {}};
        }
        if (count > 0) {
            bytes.append(buffer.data(), static_cast<std::size_t>(count));
            if (bytes.size() > maximumSize) {
                return {std::nullopt, std::make_error_code(std::errc::file_too_large)};
            }
        } else if (errno != EINTR) {
            return {std::nullopt, lastError()};
        }
    }
}

}  // namespace

bool isPlainFileName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && name.size() <= NAME_MAX &&
           name.find('/') == std::string_view::npos && name.find('\0') == std::string_view::npos;
}

FileUserDefaults::FileUserDefaults(std::string folder, DiagnosticLog& log)
    : FileUserDefaults(std::move(folder), log, ::write) {}

FileUserDefaults::FileUserDefaults(std::string folder, DiagnosticLog& log, WriteFunction write)
    : folder_(std::move(folder)), log_(log), write_(std::move(write)) {}

std::optional<std::string> FileUserDefaults::data(std::string_view key) const {
    if (!isStorable(key)) {
        return std::nullopt;
    }
    auto [bytes, error] = readFile(path(key));
    if (error) {
        complain("read", key, error);
    }
    return std::move(bytes);
}

bool FileUserDefaults::setData(std::string_view key, std::string_view bytes) {
    if (!isStorable(key)) {
        return false;
    }
    if (readFile(path(key)).bytes == bytes) {
        return true;
    }
    auto error = bytes.size() > maximumSize ? std::make_error_code(std::errc::file_too_large) : makeFolders(folder_);
    if (!error) {
        error = replaceFile(path(key), bytes, write_);
    }
    if (error == std::errc::no_such_file_or_directory) {
        // Another writer may have taken the temporary file for a leftover.
        error = replaceFile(path(key), bytes, write_);
    }
    if (error) {
        complain("save", key, error);
        return false;
    }
    complaints_.clear();
    return true;
}

bool FileUserDefaults::isStorable(std::string_view key) const {
    return !folder_.empty() && isPlainFileName(key) && !key.starts_with(temporaryPrefix);
}

std::string FileUserDefaults::path(std::string_view key) const {
    return joined(folder_, key);
}

void FileUserDefaults::complain(std::string_view action, std::string_view key, const std::error_code& cause) const {
    auto complaint = fmt::format("cannot {} {}: {}", action, path(key), cause.message());
    if (!complaints_.contains(complaint)) {
        log_.diag("settings", complaint);
        complaints_.insert(std::move(complaint));
    }
}

}  // namespace thermopix
