#pragma once

#include <string_view>

namespace thermopix {

/// Where text for a person or a script is printed, one line at a time, complete even when the process ends right after.
class StandardOutput {
public:
    virtual ~StandardOutput() = default;
    virtual void line(std::string_view text) = 0;

    /// Whether a line could not be printed.
    [[nodiscard]] virtual bool hasFailed() const = 0;
};

}  // namespace thermopix
