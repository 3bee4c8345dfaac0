#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pixels/HalfBlocks.h"
#include "pixels/StatusImage.h"

namespace thermopix {

/// In character cells; zero where the terminal does not say.
struct TerminalSize {
    std::int64_t columns = 0;
    std::int64_t rows = 0;
};

/// What a terminal is told to show. The cursor rests at the start of the line below the picture and is hidden only
/// within one redraw, so that the terminal is in order however the process ends. Pure functions.
namespace TerminalScreen {

/// The picture in half blocks; where the terminal is too small for it, its description, cut to the width.
[[nodiscard]] std::vector<std::string> lines(const StatusImage& image, TerminalSize size, TerminalColor color);

/// How many rows lines take that were drawn when they still fitted and have been wrapped to `columns` since.
[[nodiscard]] std::int64_t rowsTaken(std::span<const std::string> drawn, std::int64_t columns);

/// Replaces the `oldRows` rows above the cursor by `fresh`.
[[nodiscard]] std::string redraw(std::int64_t oldRows, std::span<const std::string> fresh);

/// The columns that a line of UTF-8 with escape sequences fills.
[[nodiscard]] std::int64_t width(std::string_view line);

}  // namespace TerminalScreen

}  // namespace thermopix
