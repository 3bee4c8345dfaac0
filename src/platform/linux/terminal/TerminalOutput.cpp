#include "platform/linux/terminal/TerminalOutput.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <utility>

#include "platform/posix/WriteAll.h"

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
    if (isLost_ || !writeAll(descriptor_, bytes)) {
        return;
    }
    isLost_ = true;
    if (lost_) {
        std::exchange(lost_, nullptr)();
    }
}

}  // namespace thermopix
