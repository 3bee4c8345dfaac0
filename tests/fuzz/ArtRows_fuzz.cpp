// Any bytes, cut into lines, are art: parsing and padding them must keep the promises of a glyph.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Fatal.h"
#include "pixels/PixelBitmap.h"
#include "pixels/PixelGlyph.h"

namespace {

using thermopix::PixelBitmap;
using thermopix::PixelGlyph;
using thermopix::require;

std::vector<std::string_view> lines(std::string_view text) {
    std::vector<std::string_view> found;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        found.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return found;
}

void requireWhole(const PixelGlyph& glyph) {
    require(glyph.cells().size() == static_cast<std::size_t>(glyph.width() * glyph.height()), "cells are missing");
}

void check(std::string_view text) {
    const PixelGlyph glyph(lines(text));
    requireWhole(glyph);

    for (const auto& [width, height] : {std::pair<std::int64_t, std::int64_t>{8, 7},
                                        {glyph.width() + 1, glyph.height() / 2},
                                        {glyph.width() / 2, glyph.height() + 1}}) {
        const PixelGlyph boxed = glyph.padded(width, height);
        requireWhole(boxed);
        require(boxed.padded(width, height) == boxed, "padding twice changes a glyph");
        for (std::int64_t y = 0; y < height; ++y) {
            for (std::int64_t x = 0; x < width; ++x) {
                const bool isArt = x < glyph.width() && y < glyph.height();
                require(boxed.at(x, y) == (isArt ? glyph.at(x, y) : thermopix::Ink::none), "padding moved a cell");
            }
        }
    }

    const std::string art = PixelBitmap(glyph.width(), glyph.height(), glyph.cells()).signature();
    require(PixelGlyph(lines(art)) == glyph, "a signature reads as another picture");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A few long rows among many short ones make a large picture of little text.
    constexpr std::size_t largest = 4096;
    check({reinterpret_cast<const char*>(data), size < largest ? size : largest});
    return 0;
}
