#pragma once

#include <cstdint>
#include <string_view>

#include "system/StandardOutput.h"

namespace thermopix {

/// Prints the result of each check as a line and counts the failures. The output outlives it.
class Checklist {
public:
    explicit Checklist(StandardOutput& output) : output_(output) {}

    void check(std::string_view label, bool passed, std::string_view detail = "");

    /// Prints the verdict; 0 when every check passed, else 1.
    [[nodiscard]] std::int32_t finish();

private:
    StandardOutput& output_;
    std::int64_t failures_ = 0;
};

}  // namespace thermopix
