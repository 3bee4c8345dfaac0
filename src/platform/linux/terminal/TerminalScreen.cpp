#include "platform/linux/terminal/TerminalScreen.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/Unicode.h"

namespace thermopix::TerminalScreen {

namespace {

constexpr std::string_view hideCursor = "\x1b[?25l";
constexpr std::string_view showCursor = "\x1b[?25h";
constexpr std::string_view clearLine = "\x1b[K";
constexpr std::string_view clearBelow = "\x1b[J";
constexpr char escape = '\x1b';

std::string cutTo(std::int64_t columns, std::string_view text) {
    const auto all = characters(text);
    const auto room = static_cast<std::size_t>(columns);
    if (all.size() <= room) {
        return std::string(text);
    }
    std::string cut;
    for (std::size_t i = 0; i + 1 < room; ++i) {
        cut += all[i];
    }
    return cut + "…";
}

bool fits(std::span<const std::string> picture, TerminalSize size) {
    const auto height = static_cast<std::int64_t>(picture.size());
    const bool isLowEnough = size.rows <= 0 || height < size.rows;
    return isLowEnough && (size.columns <= 0 || std::all_of(picture.begin(), picture.end(), [size](const auto& line) {
                               return width(line) <= size.columns;
                           }));
}

}  // namespace

std::vector<std::string> lines(const StatusImage& image, TerminalSize size, TerminalColor color) {
    auto picture = halfBlockLines(image.bitmap, color);
    if (fits(picture, size)) {
        return picture;
    }
    const auto description = image.description.value_or("");
    return {size.columns > 0 ? cutTo(size.columns, description) : description};
}

std::int64_t rowsTaken(std::span<const std::string> drawn, std::int64_t columns) {
    std::int64_t rows = 0;
    for (const auto& line : drawn) {
        rows += columns > 0 ? std::max<std::int64_t>(1, (width(line) + columns - 1) / columns) : 1;
    }
    return rows;
}

std::string redraw(std::int64_t oldRows, std::span<const std::string> fresh) {
    std::string bytes(hideCursor);
    if (oldRows > 0) {
        bytes += fmt::format("\x1b[{}A", oldRows);
    }
    bytes += '\r';
    for (const auto& line : fresh) {
        bytes += clearLine;
        bytes += line;
        bytes += "\r\n";
    }
    bytes += clearBelow;
    bytes += showCursor;
    return bytes;
}

std::int64_t width(std::string_view line) {
    std::int64_t columns = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const auto byte = static_cast<unsigned char>(line[i]);
        if (line[i] == escape) {
            // ESC [ parameters, and a final byte from @ to ~.
            i += 2;
            while (i < line.size() && (line[i] < '@' || line[i] > '~')) {
                ++i;
            }
        } else if ((byte & 0xC0U) != 0x80U) {
            ++columns;
        }
    }
    return columns;
}

}  // namespace thermopix::TerminalScreen
