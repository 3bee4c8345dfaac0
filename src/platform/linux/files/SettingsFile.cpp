#include "platform/linux/files/SettingsFile.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <filesystem>
#include <thread>
#include <utility>
#include <vector>

#include "platform/linux/files/Descriptor.h"
#include "system/StorageLimits.h"

namespace thermopix {

namespace {

constexpr std::string_view temporaryPrefix = ".thermopix-new-";
constexpr mode_t privateFolder = S_IRWXU;
constexpr mode_t privateFile = S_IRUSR | S_IWUSR;
constexpr std::chrono::milliseconds lockPause(20);

std::error_code lastError() {
    return {errno, std::generic_category()};
}

/// The folder part of a path, ready to be opened, and what follows it.
std::pair<std::string, std::string> split(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return {".", path};
    }
    return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

std::error_code makeFolders(const std::string& folder, const FileOperations& operations) {
    for (std::size_t end = folder.find('/', 1);; end = folder.find('/', end + 1)) {
        const std::string parent = folder.substr(0, end);
        const bool isNew = mkdir(parent.c_str(), privateFolder) == 0;
        const auto error = isNew ? std::error_code() : lastError();
        if (isNew) {
            const Descriptor above(open(split(parent).first.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
            operations.synchronize(above.get());
        } else if (access(parent.c_str(), F_OK) != 0) {
            return error;
        }
        if (end == std::string::npos || end + 1 == folder.size()) {
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
        path = next.starts_with('/') ? std::string(next) : fmt::format("{}/{}", split(path).first, next);
    }
    return std::make_error_code(std::errc::too_many_symbolic_link_levels);
}

bool lock(int descriptor) {
    return flock(descriptor, LOCK_EX | LOCK_NB) == 0;
}

/// Locks the folder until the descriptor is closed, also by the death of the process. A folder that another writer
/// holds for too long, or a file system without locks, is written all the same: no two writers share a temporary file.
bool lockFolder(int folder, const FileOperations& operations) {
    for (auto waited = lockPause; !lock(folder); waited += lockPause) {
        if (errno != EWOULDBLOCK || waited > StorageLimits::lockPatience) {
            return false;
        }
        operations.pause();
    }
    return true;
}

/// Removes what writers that were interrupted left behind: each holds the lock of its temporary file while it lives.
void removeLeftovers(const std::string& folder) {
    std::vector<std::filesystem::path> temporaries;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        if (isTemporaryName(entry->path().filename().native())) {
            temporaries.push_back(entry->path());
        }
    }
    for (const auto& temporary : temporaries) {
        const Descriptor file(open(temporary.c_str(), O_WRONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
        if (file && lock(file.get())) {
            unlink(temporary.c_str());
        }
    }
}

struct TemporaryFile {
    std::string name;
    Descriptor descriptor;
};

/// Under a name that this process has not used before.
TemporaryFile makeTemporaryFile(int folder) {
    static std::atomic<unsigned> count = 0;
    constexpr int maximumAttempts = 100;
    for (int i = 0; i < maximumAttempts; ++i) {
        std::string name = fmt::format("{}{}-{}", temporaryPrefix, getpid(), count++);
        Descriptor descriptor(
            openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, privateFile));
        if (!descriptor && errno != EEXIST) {
            return {{}, std::move(descriptor)};
        }
        // A file that was taken for a leftover before it was locked has no name any more.
        struct stat status {};
        const bool isOurs = descriptor && (lock(descriptor.get()) || errno != EWOULDBLOCK);
        if (isOurs && fstat(descriptor.get(), &status) == 0 && status.st_nlink > 0) {
            return {std::move(name), std::move(descriptor)};
        }
    }
    errno = EEXIST;
    return {{}, Descriptor(-1)};
}

/// Gives the file another name beside its own; where there are no hard links it loses its own. Empty on failure.
std::string keepBeside(int folder, const std::string& name) {
    std::string kept = name + ".unreadable";
    if (faccessat(folder, kept.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0) {
        kept += ".newest";
        unlinkat(folder, kept.c_str(), 0);
    }
    const bool isKept = linkat(folder, name.c_str(), folder, kept.c_str(), 0) == 0 ||
                        renameat(folder, name.c_str(), folder, kept.c_str()) == 0;
    return isKept ? kept : std::string();
}

}  // namespace

FileOperations::FileOperations() : pause([] { std::this_thread::sleep_for(lockPause); }) {}

bool isPlainFileName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && name.size() <= NAME_MAX &&
           name.find('/') == std::string_view::npos && name.find('\0') == std::string_view::npos;
}

bool isTemporaryName(std::string_view name) {
    return name.starts_with(temporaryPrefix);
}

ReadSettings readSettingsFile(const std::string& path) {
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
            if (bytes.size() > StorageLimits::largestFile) {
                return {std::nullopt, std::make_error_code(std::errc::file_too_large)};
            }
        } else if (errno != EINTR) {
            return {std::nullopt, lastError()};
        }
    }
}

ReplacedSettings replaceSettingsFile(const std::string& path, std::string_view bytes, FormerFile former,
                                     const FileOperations& operations) {
    if (const auto error = makeFolders(split(path).first, operations)) {
        return {error, {}};
    }
    std::string file = path;
    if (const auto error = followLinks(file)) {
        return {error, {}};
    }
    const auto [folderPath, name] = split(file);
    if (!isPlainFileName(name)) {
        return {std::make_error_code(std::errc::is_a_directory), {}};
    }
    const Descriptor folder(open(folderPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder) {
        return {lastError(), {}};
    }
    struct stat status {};
    const bool hasFormer = fstatat(folder.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    if (hasFormer && !S_ISREG(status.st_mode)) {
        return {std::make_error_code(std::errc::invalid_argument), {}};
    }
    if (lockFolder(folder.get(), operations)) {
        removeLeftovers(folderPath);
    }
    const TemporaryFile temporary = makeTemporaryFile(folder.get());
    if (!temporary.descriptor) {
        return {lastError(), {}};
    }
    ReplacedSettings result{writeAll(temporary.descriptor.get(), bytes, operations.write), {}};
    if (!result.error && operations.synchronize(temporary.descriptor.get()) != 0) {
        result.error = lastError();
    }
    if (!result.error && hasFormer && former == FormerFile::keptBeside) {
        const std::string kept = keepBeside(folder.get(), name);
        result = kept.empty() ? ReplacedSettings{lastError(), {}} : ReplacedSettings{{}, folderPath + kept};
    }
    if (!result.error && renameat(folder.get(), temporary.name.c_str(), folder.get(), name.c_str()) != 0) {
        result.error = lastError();
    }
    if (result.error) {
        unlinkat(folder.get(), temporary.name.c_str(), 0);
        return result;
    }
    // The new bytes are in place; where the folder cannot be synchronised, only a power cut could still undo that.
    operations.synchronize(folder.get());
    return result;
}

}  // namespace thermopix
