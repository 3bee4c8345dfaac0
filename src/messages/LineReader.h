#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace thermopix {

/// Cuts a stream of bytes into lines, however the bytes arrive.
class LineReader {
public:
    /// A line of more bytes, its line feed apart, ends the reading.
    explicit LineReader(std::size_t maximumBytes) : maximumBytes_(maximumBytes) {}

    /// Bytes after a line that was too long are dropped.
    void append(std::string_view bytes);

    /// The next whole line without its line feed; none when it has not arrived yet.
    [[nodiscard]] std::optional<std::string> takeLine();

    /// A line was too long, and no more lines come.
    [[nodiscard]] bool hasFailed() const { return hasFailed_; }

private:
    std::size_t maximumBytes_;
    std::string bytes_;
    /// Where the next line begins.
    std::size_t start_ = 0;
    /// No line feed before here.
    std::size_t searched_ = 0;
    bool hasFailed_ = false;
};

}  // namespace thermopix
