#pragma once

#include "platform/posix/WriteAll.h"
#include "system/StandardOutput.h"

namespace thermopix {

/// Prints to an open file descriptor, unbuffered. Where nobody reads any more (SIGPIPE is ignored by the process) or
/// the disk is full, lines are dropped.
class StandardOutputStream final : public StandardOutput {
public:
    /// The descriptor stays the caller's.
    explicit StandardOutputStream(int descriptor, WriteFunction write = ::write);

    void line(std::string_view text) override;
    [[nodiscard]] bool hasFailed() const override { return hasFailed_; }

private:
    int descriptor_;
    WriteFunction write_;
    bool hasFailed_ = false;
};

}  // namespace thermopix
