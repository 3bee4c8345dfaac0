#include "platform/linux/terminal/TerminalOutput.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace thermopix {

TerminalOutput::TerminalOutput(int descriptor, std::function<void()> lost)
    : descriptor_(descriptor), lost_(std::move(lost)) {}

bool TerminalOutput::isTerminal() const {
    return isatty(descriptor_) == 1;
}

TerminalSize TerminalOutput::size() const {
    winsize reported{};
    if (ioctl(descriptor_, TIOCGWINSZ, &reported) != 0) {
        return {};
    }
    return {reported.ws_col, reported.ws_row};
}

void TerminalOutput::write(std::string_view bytes) {
    if (isLost_ || writeAll(bytes)) {
        return;
    }
    isLost_ = true;
    if (lost_) {
        std::exchange(lost_, nullptr)();
    }
}

bool TerminalOutput::writeAll(std::string_view bytes) const {
    while (!bytes.empty()) {
        const auto written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {
            // Someone made the shared descriptor non-blocking; half a redraw would leave the cursor hidden.
            pollfd writable{descriptor_, POLLOUT, 0};
            static_cast<void>(poll(&writable, 1, -1));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

}  // namespace thermopix
