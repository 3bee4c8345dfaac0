#include "platform/linux/sensors/FileAccess.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

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

}  // namespace thermopix
