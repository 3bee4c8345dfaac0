#include "pixels/HalfBlocks.h"

#include <string_view>
#include <utility>

namespace thermopix {

namespace {

constexpr std::string_view blank = " ";
constexpr std::string_view upperHalf = "\u2580";
constexpr std::string_view lowerHalf = "\u2584";
constexpr std::string_view fullBlock = "\u2588";

/// How a column is coloured: as the terminal writes, dim, or, where full ink meets ghost ink, as the terminal writes
/// on the grey of its palette.
enum class Shade { plain, dim, onGrey };

constexpr std::string_view reset = "\033[0m";

std::string_view escapeSequence(Shade shade) {
    switch (shade) {
        case Shade::plain:
            break;
        case Shade::dim:
            return "\033[2m";
        case Shade::onGrey:
            return "\033[100m";
    }
    return "";
}

struct Column {
    std::string_view block;
    Shade shade;
};

Column column(Ink upper, Ink lower) {
    if (upper == Ink::none && lower == Ink::none) {
        return {blank, Shade::plain};
    }
    if (upper == lower) {
        return {fullBlock, upper == Ink::ghost ? Shade::dim : Shade::plain};
    }
    if (upper == Ink::none || lower == Ink::none) {
        const bool isGhost = upper == Ink::ghost || lower == Ink::ghost;
        return {lower == Ink::none ? upperHalf : lowerHalf, isGhost ? Shade::dim : Shade::plain};
    }
    return {upper == Ink::full ? upperHalf : lowerHalf, Shade::onGrey};
}

/// One line of text that says a shade only where it changes.
class Line {
public:
    void add(const Column& column) {
        // A blank looks the same dim or not.
        const bool fits = column.shade == shade_ || (column.block == blank && shade_ == Shade::dim);
        if (!fits) {
            change(column.shade);
        }
        text_ += column.block;
    }

    [[nodiscard]] std::string finished() && {
        change(Shade::plain);
        return std::move(text_);
    }

private:
    void change(Shade shade) {
        if (shade_ != Shade::plain) {
            text_ += reset;
        }
        text_ += escapeSequence(shade);
        shade_ = shade;
    }

    std::string text_;
    Shade shade_ = Shade::plain;
};

}  // namespace

std::vector<std::string> halfBlockLines(const PixelBitmap& bitmap, TerminalColor color) {
    const auto inkAt = [&](std::int64_t x, std::int64_t y) {
        const Ink ink = y < bitmap.height() ? bitmap.at(x, y) : Ink::none;
        return ink == Ink::ghost && color == TerminalColor::avoided ? Ink::none : ink;
    };
    std::vector<std::string> lines;
    for (std::int64_t y = 0; y < bitmap.height(); y += 2) {
        Line line;
        for (std::int64_t x = 0; x < bitmap.width(); ++x) {
            line.add(column(inkAt(x, y), inkAt(x, y + 1)));
        }
        lines.push_back(std::move(line).finished());
    }
    return lines;
}

}  // namespace thermopix
