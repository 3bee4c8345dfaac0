#include "platform/macos/system/MacStandardOutput.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <string>

namespace thermopix {

namespace {

// True when the write is worth another try.
bool waitAfterFailure(int descriptor) {
    if (errno == EAGAIN) {
        pollfd request{descriptor, POLLOUT, 0};
        poll(&request, 1, -1);
        return true;
    }
    return errno == EINTR;
}

}  // namespace

void MacStandardOutput::line(std::string_view text) {
    const std::string bytes = std::string(text) + '\n';
    std::string_view left = bytes;
    while (!left.empty()) {
        const ssize_t count = ::write(descriptor_, left.data(), left.size());
        if (count > 0) {
            left.remove_prefix(static_cast<std::size_t>(count));
        } else if (count == 0 || !waitAfterFailure(descriptor_)) {
            return;
        }
    }
}

}  // namespace thermopix
