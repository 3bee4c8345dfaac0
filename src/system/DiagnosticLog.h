#pragma once

#include <string_view>

namespace thermopix {

/// Where the program's diagnostic messages go; `Log` is the real one. Any thread.
class DiagnosticLog {
public:
    virtual ~DiagnosticLog() = default;
    virtual void diag(std::string_view category, std::string_view message) = 0;
};

}  // namespace thermopix
