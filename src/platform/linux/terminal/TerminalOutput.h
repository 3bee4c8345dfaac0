#pragma once

#include <functional>
#include <string_view>

#include "platform/linux/terminal/TerminalScreen.h"

namespace thermopix {

/// An open descriptor that text is written to; not owned. Once it takes no more, nothing is written again. The process
/// is expected to ignore SIGPIPE. Main thread.
class TerminalOutput {
public:
    /// `lost` is called once, inside the `write` that failed.
    TerminalOutput(int descriptor, std::function<void()> lost);

    [[nodiscard]] bool isTerminal() const;
    [[nodiscard]] TerminalSize size() const;

    /// Writes at once and in one system call, unless the system takes less.
    void write(std::string_view bytes);

private:
    int descriptor_;
    std::function<void()> lost_;
    bool isLost_ = false;
};

}  // namespace thermopix
