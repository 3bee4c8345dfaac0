#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "base/Enumeration.h"
#include "pixels/PixelFont.h"
#include "pixels/PixelPet.h"
#include "pixels/PixelSize.h"

namespace thermopix {

/// Which font the readout is set in, and how its cells are drawn.
enum class PixelStyle { arcade, micro, segment, dotMatrix };

template <>
struct EnumerationTable<PixelStyle> {
    struct Row {
        PixelStyle value;
        std::string_view rawValue;
        std::string_view title;
        std::string_view subtitle;
        std::string_view fontName;
        const PixelFont& (*font)();
        bool isRound;
        /// Points, by `PixelSize`.
        std::array<double, caseCount<PixelSize>> dotInset;
    };
    static constexpr std::array rows{
        Row{PixelStyle::arcade,
            "arcade",
            "Arcade",
            "Chunky 5×7 pixels. The default.",
            "arcade5x7",
            &PixelFont::arcade5x7,
            false,
            {0, 0}},
        Row{PixelStyle::micro,
            "micro",
            "Micro",
            "3×5 digits. Narrowest, for a full menu bar.",
            "micro3x5",
            &PixelFont::micro3x5,
            false,
            {0, 0}},
        Row{PixelStyle::segment,
            "segment",
            "Segment",
            "LCD seven-segment, unlit segments ghosted.",
            "segment4x7",
            &PixelFont::segment4x7,
            false,
            {0, 0}},
        Row{PixelStyle::dotMatrix,
            "dotMatrix",
            "Dot Matrix",
            "5×7 drawn as separated dots.",
            "arcade5x7",
            &PixelFont::arcade5x7,
            true,
            {0.5, 0.75}},
    };
};
static_assert(isCompleteTable<PixelStyle::dotMatrix>());

[[nodiscard]] std::span<const PixelStyle> pixelStyleDisplayOrder();
[[nodiscard]] inline const PixelFont& font(PixelStyle style) {
    return row(style).font();
}
[[nodiscard]] constexpr bool isRound(PixelStyle style) {
    return row(style).isRound;
}

/// Points between a cell's edge and its dot.
[[nodiscard]] constexpr double dotInset(PixelStyle style, PixelSize size) {
    return row(style).dotInset[static_cast<std::size_t>(size)];
}

/// Empty columns between glyphs.
[[nodiscard]] constexpr std::int64_t tracking(PixelStyle /*style*/) {
    return 1;
}

/// The height in points that a rendered readout must not exceed.
inline constexpr double menuBarThickness = 22.0;

/// Height of the readout in points, with or without a pet.
[[nodiscard]] double renderedHeight(PixelStyle style, PixelSize size, PixelPet pet);

}  // namespace thermopix
