#pragma once

#include "system/StandardOutput.h"

namespace thermopix {

/// A file descriptor of the process, written without a buffer.
class MacStandardOutput final : public StandardOutput {
public:
    explicit MacStandardOutput(int descriptor) : descriptor_(descriptor) {}

    void line(std::string_view text) override;

private:
    int descriptor_;
};

}  // namespace thermopix
