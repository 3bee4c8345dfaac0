#include "platform/posix/WriteAll.h"

#include <poll.h>

#include <cerrno>

namespace thermopix {

namespace {

void waitUntilWritable(int descriptor) {
    pollfd request{descriptor, POLLOUT, 0};
    poll(&request, 1, -1);
}

}  // namespace

std::error_code writeAll(int descriptor, std::string_view bytes, const WriteFunction& write) {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (count == 0) {
            return std::make_error_code(std::errc::io_error);
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            waitUntilWritable(descriptor);
        } else if (errno != EINTR) {
            return {errno, std::generic_category()};
        }
    }
    return {};
}

}  // namespace thermopix
