// Preloaded into the program, makes its calls to the system slow or fail by the rules in the folder that
// THERMOPIX_FAULTS names. Each line of its file `rules` is a call (open, read, write, fsync, rename), a part of a path,
// and what happens:
//   held     the call waits until the test opens the pipe `gate` for writing
//   250ms    the call takes so long
//   ENOSPC   the call fails so (one of the names below)
// The first rule that fits counts. A call that is held is first written to the file `held`, as "call path".
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>

namespace {

struct ErrorName {
    std::string_view name;
    int number;
};
constexpr std::array errorNames{ErrorName{"EACCES", EACCES}, ErrorName{"EIO", EIO}, ErrorName{"ENODEV", ENODEV},
                                ErrorName{"ENOSPC", ENOSPC}};

/// The system's own function of this name.
template <typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

int realOpen(const char* path, int flags, mode_t mode = 0600) {
    static auto* const function = next<int(const char*, int, ...)>("open");
    return function(path, flags, mode);
}

ssize_t realWrite(int descriptor, const void* bytes, std::size_t count) {
    static auto* const function = next<ssize_t(int, const void*, std::size_t)>("write");
    return function(descriptor, bytes, count);
}

std::string pathIn(const char* name) {
    const char* const folder = std::getenv("THERMOPIX_FAULTS");
    return folder == nullptr ? std::string() : std::string(folder) + "/" + name;
}

std::string content(const std::string& path) {
    std::string text;
    const int file = realOpen(path.c_str(), O_RDONLY | O_CLOEXEC);
    std::array<char, 512> buffer{};
    for (ssize_t count = 0; file >= 0 && (count = read(file, buffer.data(), buffer.size())) > 0;) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    if (file >= 0) {
        close(file);
    }
    return text;
}

std::string_view takeUntil(std::string_view& text, char end) {
    const auto part = text.substr(0, text.find(end));
    text.remove_prefix(part.size() < text.size() ? part.size() + 1 : text.size());
    return part;
}

/// What is to happen to a call; empty for nothing.
std::string behaviour(std::string_view call, std::string_view path) {
    const std::string rules = content(pathIn("rules"));
    for (std::string_view rest = rules; !rest.empty();) {
        auto line = takeUntil(rest, '\n');
        const bool isCall = takeUntil(line, ' ') == call;
        const auto part = takeUntil(line, ' ');
        if (isCall && path.find(part) != std::string_view::npos) {
            return std::string(line);
        }
    }
    return {};
}

void holdUntilTheGateOpens(std::string_view call, std::string_view path) {
    const std::string line = std::string(call) + " " + std::string(path) + "\n";
    const int held = realOpen(pathIn("held").c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC);
    realWrite(held, line.data(), line.size());
    close(held);
    close(realOpen(pathIn("gate").c_str(), O_RDONLY | O_CLOEXEC));
}

/// False when the call is to fail, with `errno`.
bool passes(const char* call, std::string_view path) {
    const std::string what = behaviour(call, path);
    if (what == "held") {
        holdUntilTheGateOpens(call, path);
    } else if (what.ends_with("ms")) {
        const auto milliseconds = std::strtol(what.c_str(), nullptr, 10);
        const timespec time{milliseconds / 1000, milliseconds % 1000 * 1'000'000};
        nanosleep(&time, nullptr);
    } else {
        for (const auto& error : errorNames) {
            if (error.name == what) {
                errno = error.number;
                return false;
            }
        }
    }
    return true;
}

bool passes(const char* call, int descriptor) {
    std::array<char, 1024> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = readlink(link.c_str(), path.data(), path.size());
    return length <= 0 || passes(call, std::string_view(path.data(), static_cast<std::size_t>(length)));
}

template <typename Function, typename... Arguments>
auto callNext(const char* name, Arguments... arguments) {
    return next<Function>(name)(arguments...);
}

mode_t modeOf(int flags, va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

// The names of the parameters are not those of every libc, and these functions are what they are.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name,bugprone-reserved-identifier,cert-dcl50-cpp)

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return passes("open", std::string_view(path)) ? realOpen(path, flags, mode) : -1;
}

int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return passes("open", std::string_view(path)) ? realOpen(path, flags, mode) : -1;
}

int __open_2(const char* path, int flags) {
    return passes("open", std::string_view(path)) ? realOpen(path, flags) : -1;
}

int __open64_2(const char* path, int flags) {
    return passes("open", std::string_view(path)) ? realOpen(path, flags) : -1;
}

ssize_t pread(int descriptor, void* bytes, std::size_t count, off_t offset) {
    return passes("read", descriptor)
               ? callNext<ssize_t(int, void*, std::size_t, off_t)>("pread", descriptor, bytes, count, offset)
               : -1;
}

ssize_t pread64(int descriptor, void* bytes, std::size_t count, off64_t offset) {
    return pread(descriptor, bytes, count, offset);
}

ssize_t __pread_chk(int descriptor, void* bytes, std::size_t count, off_t offset, std::size_t /*room*/) {
    return pread(descriptor, bytes, count, offset);
}

ssize_t __pread64_chk(int descriptor, void* bytes, std::size_t count, off64_t offset, std::size_t /*room*/) {
    return pread(descriptor, bytes, count, offset);
}

ssize_t write(int descriptor, const void* bytes, std::size_t count) {
    return passes("write", descriptor) ? realWrite(descriptor, bytes, count) : -1;
}

int fsync(int descriptor) {
    return passes("fsync", descriptor) ? callNext<int(int)>("fsync", descriptor) : -1;
}

int rename(const char* from, const char* to) noexcept {
    return passes("rename", std::string_view(to)) ? callNext<int(const char*, const char*)>("rename", from, to) : -1;
}

}  // extern "C"

// NOLINTEND(readability-inconsistent-declaration-parameter-name,bugprone-reserved-identifier,cert-dcl50-cpp)
