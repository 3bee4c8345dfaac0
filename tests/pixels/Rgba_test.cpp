#include "pixels/Rgba.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "pixels/PixelArt.h"
#include "pixels/StatusImageRenderer.h"

namespace thermopix {
namespace {

constexpr double pi = 3.14159265358979323846;
constexpr RgbaColor clear{0, 0, 0, 0};
constexpr RgbaColor black{0, 0, 0, 255};
constexpr RgbaColor white{255, 255, 255, 255};

RgbaImage filled(std::int64_t width, std::int64_t height, RgbaColor color) {
    return {width, height, std::vector<RgbaColor>(static_cast<std::size_t>(width * height), color)};
}

StatusImage dots(std::initializer_list<std::string_view> rows, PixelSize size) {
    return StatusImageRenderer::image(bitmapOf(rows), PixelStyle::dotMatrix, size);
}

StatusImage squares(std::initializer_list<std::string_view> rows, PixelSize size) {
    return StatusImageRenderer::image(bitmapOf(rows), PixelStyle::arcade, size);
}

/// The alphas, row by row.
std::vector<std::vector<int>> alphas(const RgbaImage& image) {
    std::vector<std::vector<int>> rows;
    for (std::int64_t y = 0; y < image.height; ++y) {
        rows.emplace_back();
        for (std::int64_t x = 0; x < image.width; ++x) {
            rows.back().push_back(image.at(x, y).alpha);
        }
    }
    return rows;
}

using Rows = std::vector<std::vector<int>>;

TEST(Rasterize, DrawsSquaresWithHardEdges) {
    EXPECT_EQ(alphas(rasterize(squares({"#.:", ".#."}, PixelSize::compact), 1)), (Rows{
                                                                                     {255, 255, 0, 0, 31, 31},
                                                                                     {255, 255, 0, 0, 31, 31},
                                                                                     {0, 0, 255, 255, 0, 0},
                                                                                     {0, 0, 255, 255, 0, 0},
                                                                                 }));
}

TEST(Rasterize, DrawsInBlackOnTransparentGround) {
    for (const RgbaColor& pixel : rasterize(squares({"#.:"}, PixelSize::large), 2).pixels) {
        EXPECT_EQ((RgbaColor{0, 0, 0, pixel.alpha}), pixel);
    }
}

TEST(Rasterize, ScalesPointsToPixels) {
    for (const std::int64_t scale : {1, 2, 3, 8}) {
        const RgbaImage raster = rasterize(squares({"#.", ".#", "#."}, PixelSize::large), scale);
        EXPECT_EQ(raster.width, 6 * scale);
        EXPECT_EQ(raster.height, 9 * scale);
        EXPECT_EQ(raster.at(3 * scale - 1, 3 * scale - 1), black);
        EXPECT_EQ(raster.at(3 * scale, 3 * scale - 1), clear);
        EXPECT_EQ(raster.at(3 * scale, 3 * scale), black);
    }
}

TEST(Rasterize, CoversEachPixelOfADotByItsShareOfTheArea) {
    // A dot of one point, centred on a corner that four pixels share: a quarter of the disc in each.
    const int quarter = static_cast<int>(std::lround(255 * pi * 0.25 / 4));
    EXPECT_EQ(alphas(rasterize(dots({"#"}, PixelSize::compact), 1)), (Rows{{quarter, quarter}, {quarter, quarter}}));

    // A dot of 1.5 points in a cell of three fills the middle pixel and spills a little into the corners.
    EXPECT_EQ(alphas(rasterize(dots({"#"}, PixelSize::large), 1)), (Rows{{0, 48, 0}, {48, 255, 48}, {0, 48, 0}}));
}

TEST(Rasterize, MovesADotOntoAPointOnlyWhereFourWouldShareIt) {
    const auto onPoints = [](PixelSize size, std::int64_t scale) {
        return rasterize(dots({"#:"}, size), scale, DotPlacement::onPoints);
    };
    const int whole = static_cast<int>(std::lround(255 * pi * 0.25));
    const int faint = static_cast<int>(std::lround(0.12 * 255 * pi * 0.25));
    EXPECT_EQ(alphas(onPoints(PixelSize::compact, 1)), (Rows{{whole, 0, faint, 0}, {0, 0, 0, 0}}));

    // Twice as large, so that half the size of it is the same.
    EXPECT_EQ(alphas(onPoints(PixelSize::compact, 2)), (Rows{{whole, whole, 0, 0, faint, faint, 0, 0},
                                                             {whole, whole, 0, 0, faint, faint, 0, 0},
                                                             {0, 0, 0, 0, 0, 0, 0, 0},
                                                             {0, 0, 0, 0, 0, 0, 0, 0}}));

    EXPECT_EQ(onPoints(PixelSize::large, 1), rasterize(dots({"#:"}, PixelSize::large), 1));
    EXPECT_EQ(rasterize(squares({"#:"}, PixelSize::compact), 1, DotPlacement::onPoints),
              rasterize(squares({"#:"}, PixelSize::compact), 1));
}

TEST(Rasterize, DrawsDotsThatAreSymmetricAndAlike) {
    for (const PixelSize size : allCases<PixelSize>()) {
        for (const std::int64_t scale : {1, 2, 3, 5, 8}) {
            const RgbaImage raster = rasterize(dots({"##", ":#"}, size), scale);
            const std::int64_t cell = raster.width / 2;
            double ink = 0;
            for (std::int64_t y = 0; y < cell; ++y) {
                for (std::int64_t x = 0; x < cell; ++x) {
                    const int alpha = raster.at(x, y).alpha;
                    EXPECT_EQ(alpha, raster.at(cell - 1 - x, y).alpha);
                    EXPECT_EQ(alpha, raster.at(y, x).alpha);
                    EXPECT_EQ(alpha, raster.at(cell + x, cell + y).alpha);
                    EXPECT_NEAR(alpha * 0.12, raster.at(x, cell + y).alpha, 0.6);
                    ink += alpha / 255.0;
                }
            }
            const double radius = (size == PixelSize::compact ? 0.5 : 0.75) * static_cast<double>(scale);
            EXPECT_NEAR(ink, pi * radius * radius, 0.002 * static_cast<double>(cell * cell));
        }
    }
}

TEST(Rasterize, LeavesThePointsAroundADotClear) {
    const RgbaImage raster = rasterize(dots({"#"}, PixelSize::large), 8);
    // The inset of 0.75 points is six pixels.
    EXPECT_EQ(raster.at(5, 12), clear);
    EXPECT_NE(raster.at(6, 12), clear);
    EXPECT_EQ(raster.at(12, 12), black);
    EXPECT_EQ(raster.at(6, 6), clear) << "the corner of the dot's box";
}

TEST(Rasterize, GivesASquareThePixelsWhoseCentresItHolds) {
    StatusImage image = squares({"#"}, PixelSize::large);
    image.inset = 0.75;
    EXPECT_EQ(alphas(rasterize(image, 1)), (Rows{{0, 0, 0}, {0, 255, 0}, {0, 0, 0}}));
}

TEST(Rasterize, DrawsTheBlankImageAsOneTransparentPoint) {
    EXPECT_EQ(rasterize(StatusImage(), 1), filled(1, 1, clear));
    EXPECT_EQ(rasterize(StatusImage(), 3), filled(3, 3, clear));
}

TEST(RasterizeDeathTest, EndsTheProcessForCellsThatAreNoWholePixels) {
    StatusImage image = squares({"#"}, PixelSize::compact);
    EXPECT_DEATH((void)rasterize(image, 0), "one pixel per point");
    image.cell = 2.5;
    EXPECT_DEATH((void)rasterize(image, 1), "whole number of pixels");
    EXPECT_EQ(rasterize(image, 2).width, 5);
    image.inset = 1.25;
    EXPECT_DEATH((void)rasterize(image, 2), "must fit its cell");
}

TEST(DrawOver, CoversTheGroundByTheAlphaOfTheTop) {
    RgbaImage ground = filled(3, 1, white);
    drawOver(ground, {3, 1, {black, {0, 0, 0, 31}, clear}}, 0, 0);
    EXPECT_EQ(ground.at(0, 0), black);
    EXPECT_EQ(ground.at(1, 0), (RgbaColor{224, 224, 224, 255}));
    EXPECT_EQ(ground.at(2, 0), white);
}

TEST(DrawOver, MixesStraightAlphas) {
    RgbaImage ground = filled(2, 1, clear);
    drawOver(ground, filled(2, 1, {200, 100, 50, 128}), 0, 0);
    EXPECT_EQ(ground.at(0, 0), (RgbaColor{200, 100, 50, 128})) << "nothing of a transparent ground shows";

    // Half over half: three quarters opaque, two thirds of the colour from the top.
    ground = filled(1, 1, {0, 0, 255, 128});
    drawOver(ground, filled(1, 1, {255, 0, 0, 128}), 0, 0);
    EXPECT_EQ(ground.at(0, 0), (RgbaColor{170, 0, 85, 192}));
}

TEST(DrawOver, AgreesWithTheDefinitionForEveryPairOfAlphas) {
    for (int top = 0; top <= 255; ++top) {
        for (int below = 0; below <= 255; ++below) {
            RgbaImage ground = filled(1, 1, {10, 250, 77, static_cast<std::uint8_t>(below)});
            drawOver(ground, filled(1, 1, {240, 5, 77, static_cast<std::uint8_t>(top)}), 0, 0);
            const double topShare = top / 255.0;
            const double groundShare = below / 255.0 * (1 - topShare);
            const double alpha = topShare + groundShare;
            const RgbaColor& pixel = ground.at(0, 0);
            ASSERT_NEAR(pixel.alpha, alpha * 255, 0.5 + 1e-9);
            if (alpha > 0) {
                ASSERT_NEAR(pixel.red, (240 * topShare + 10 * groundShare) / alpha, 0.5 + 1e-9);
                ASSERT_NEAR(pixel.green, (5 * topShare + 250 * groundShare) / alpha, 0.5 + 1e-9);
                ASSERT_EQ(pixel.blue, 77);
            }
        }
    }
}

TEST(DrawOver, ClipsTheTopToTheGround) {
    const RgbaImage top{2, 2, {{1, 0, 0, 255}, {2, 0, 0, 255}, {3, 0, 0, 255}, {4, 0, 0, 255}}};
    const auto reds = [&top](std::int64_t x, std::int64_t y) {
        RgbaImage ground = filled(2, 2, {9, 0, 0, 255});
        drawOver(ground, top, x, y);
        return std::vector<int>{ground.at(0, 0).red, ground.at(1, 0).red, ground.at(0, 1).red, ground.at(1, 1).red};
    };
    EXPECT_EQ(reds(0, 0), (std::vector{1, 2, 3, 4}));
    EXPECT_EQ(reds(1, 0), (std::vector{9, 1, 9, 3}));
    EXPECT_EQ(reds(-1, -1), (std::vector{4, 9, 9, 9}));
    EXPECT_EQ(reds(0, 1), (std::vector{9, 9, 1, 2}));
    for (const std::int64_t outside : {std::int64_t{2}, std::int64_t{-2}, std::numeric_limits<std::int64_t>::min()}) {
        EXPECT_EQ(reds(outside, 0), (std::vector{9, 9, 9, 9}));
        EXPECT_EQ(reds(0, outside), (std::vector{9, 9, 9, 9}));
    }
}

TEST(Tinted, GivesEveryPixelTheColourAndKeepsItsCoverage) {
    const RgbaImage mask{3, 1, {black, {0, 0, 0, 31}, clear}};
    const RgbaImage light = tinted(mask, {240, 230, 220, 255});
    EXPECT_EQ(light.at(0, 0), (RgbaColor{240, 230, 220, 255}));
    EXPECT_EQ(light.at(1, 0), (RgbaColor{240, 230, 220, 31}));
    EXPECT_EQ(light.at(2, 0).alpha, 0);
}

TEST(Tinted, MixesATranslucentColourIn) {
    EXPECT_EQ(tinted(filled(1, 1, {100, 100, 100, 7}), {200, 0, 100, 51}).at(0, 0), (RgbaColor{120, 80, 100, 7}));
    EXPECT_EQ(tinted(filled(1, 1, {1, 2, 3, 4}), {200, 0, 100, 0}).at(0, 0), (RgbaColor{1, 2, 3, 4}));
}

TEST(RgbaImageDeathTest, EndsTheProcessForPixelsThatAreNotThere) {
    const RgbaImage image = filled(2, 1, white);
    EXPECT_DEATH((void)image.at(2, 0), "cell outside the grid");
    EXPECT_DEATH((void)image.at(0, -1), "cell outside the grid");
    const RgbaImage torn{2, 2, std::vector<RgbaColor>(3)};
    RgbaImage ground = image;
    EXPECT_DEATH((void)torn.at(0, 0), "width × height");
    EXPECT_DEATH(drawOver(ground, torn, 0, 0), "width × height");
    EXPECT_DEATH((void)tinted(torn, black), "width × height");
}

}  // namespace
}  // namespace thermopix
