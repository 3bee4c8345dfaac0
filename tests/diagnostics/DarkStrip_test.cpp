#include "diagnostics/DarkStrip.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "pixels/PixelStyle.h"
#include "pixels/StatusImageRenderer.h"

namespace thermopix {
namespace {

/// One character a pixel: "." for the ground, ":" for ghost ink, "#" for full ink, "?" for anything else.
std::string art(const RgbaImage& image, std::int64_t left, std::int64_t top, std::int64_t width, std::int64_t height) {
    std::string rows;
    for (std::int64_t y = top; y < top + height; ++y) {
        for (std::int64_t x = left; x < left + width; ++x) {
            const auto& pixel = image.at(x, y);
            rows += pixel == RgbaColor{18, 18, 18, 255}      ? '.'
                    : pixel == RgbaColor{45, 45, 45, 255}    ? ':'
                    : pixel == RgbaColor{240, 240, 240, 255} ? '#'
                                                             : '?';
        }
        rows += '\n';
    }
    return rows;
}

StatusImage twoCells() {
    return StatusImageRenderer::image(PixelBitmap(3, 1, {Ink::full, Ink::none, Ink::ghost}), PixelStyle::arcade,
                                      PixelSize::compact);
}

TEST(DarkStripTest, IsEightPointsWiderOnEitherSideAndAsHighAsTheMenuBarAtTwicePixels) {
    const auto strip = darkStrip(twoCells());
    EXPECT_EQ(strip.width, 2 * (6 + 16));
    EXPECT_EQ(strip.height, 44);
}

TEST(DarkStripTest, HasFullInkLightAndGhostInkAtItsTwelvePercentInTheMiddle) {
    const auto strip = darkStrip(twoCells());
    EXPECT_EQ(art(strip, 15, 19, 14, 6),
              "..............\n"
              ".####....::::.\n"
              ".####....::::.\n"
              ".####....::::.\n"
              ".####....::::.\n"
              "..............\n");
}

TEST(DarkStripTest, IsDarkAndOpaqueEverywhereElse) {
    const auto strip = darkStrip(twoCells());
    std::map<char, int> counts;
    for (const auto pixel : art(strip, 0, 0, strip.width, strip.height)) {
        ++counts[pixel];
    }
    EXPECT_EQ(counts['#'], 16);
    EXPECT_EQ(counts[':'], 16);
    EXPECT_EQ(counts['?'], 0);
    EXPECT_EQ(counts['.'], 44 * 44 - 32);
}

TEST(DarkStripTest, CentresAPictureOfOddHeightOnWholePixels) {
    const auto image = StatusImageRenderer::image(PixelBitmap(1, 5, std::vector<Ink>(5, Ink::full)), PixelStyle::arcade,
                                                  PixelSize::large);
    const auto strip = darkStrip(image);
    EXPECT_EQ(art(strip, 15, 6, 3, 2), "...\n.##\n");
    EXPECT_EQ(art(strip, 15, 36, 3, 2), ".##\n...\n");
}

TEST(DarkStripTest, ABlankPictureIsAnEmptyStrip) {
    const auto strip = darkStrip(StatusImageRenderer::image(PixelBitmap(), PixelStyle::arcade, PixelSize::compact));
    EXPECT_EQ(strip.width, 2 * (1 + 16));
    EXPECT_EQ(art(strip, 16, 21, 2, 2), "..\n..\n");
}

}  // namespace
}  // namespace thermopix
