#include "diagnostics/Checklist.h"

#include <fmt/format.h>

namespace thermopix {

void Checklist::check(std::string_view label, bool passed, std::string_view detail) {
    if (!passed) {
        ++failures_;
    }
    output_.line(fmt::format("{}{}{}{}", passed ? "  ok  " : "FAIL  ", label, detail.empty() ? "" : "  — ", detail));
}

std::int32_t Checklist::finish() {
    output_.line("");
    output_.line(failures_ == 0 ? "PASSED" : fmt::format("FAILED ({})", failures_));
    return failures_ == 0 ? 0 : 1;
}

}  // namespace thermopix
