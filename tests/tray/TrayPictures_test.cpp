#include "tray/TrayPictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "pixels/PixelRasterizer.h"
#include "pixels/StatusImageRenderer.h"

namespace thermopix {
namespace {

constexpr TrayInk ink{{10, 20, 30}, RgbaColor{40, 50, 60}};

Display celsius(std::int64_t value) {
    Display display;
    display.value = value;
    return display;
}

Display fahrenheit(std::int64_t value) {
    Display display = celsius(value);
    display.unit = TemperatureUnit::fahrenheit;
    return display;
}

StatusImage readout(PixelStyle style, PixelSize size, PixelPet pet = PixelPet::none) {
    return StatusImageRenderer::image(celsius(72), {.style = style, .size = size, .pet = pet, .showsUnitLetter = true});
}

StatusImage digits(const Display& display) {
    return trayArt({StatusImage{}, PixelRasterizer::digitsBitmap(display)}, TrayShape::square);
}

/// Rows of "#" for full ink, ":" for ghost ink, "." for nothing and "?" for any other pixel.
std::string rows(const TrayPicture& picture) {
    std::string text;
    for (std::size_t i = 0; i + 3 < picture.argb.size(); i += 4) {
        const auto* pixel = &picture.argb[i];
        const RgbaColor color{pixel[1], pixel[2], pixel[3], pixel[0]};
        text += color == ink.full ? '#' : color == ink.ghost ? ':' : color == RgbaColor{0, 0, 0, 0} ? '.' : '?';
        if ((i / 4 + 1) % static_cast<std::size_t>(picture.width) == 0) {
            text += '\n';
        }
    }
    return text;
}

/// What `rows` should be: the bitmap in cells of `cell` pixels, `left` and `top` pixels from the corner.
std::string enlarged(const PixelBitmap& bitmap, std::int64_t cell, std::int64_t width, std::int64_t height,
                     std::int64_t left, std::int64_t top) {
    std::vector<std::string> lines(static_cast<std::size_t>(height), std::string(static_cast<std::size_t>(width), '.'));
    for (std::int64_t y = 0; y < bitmap.height() * cell; ++y) {
        for (std::int64_t x = 0; x < bitmap.width() * cell; ++x) {
            lines[static_cast<std::size_t>(top + y)][static_cast<std::size_t>(left + x)] =
                artCharacter(bitmap.at(x / cell, y / cell));
        }
    }
    std::string text;
    for (const auto& line : lines) {
        text += line + "\n";
    }
    return text;
}

const TrayPicture& withHeight(const std::vector<TrayPicture>& pictures, std::int32_t height) {
    return *std::find_if(pictures.begin(), pictures.end(),
                         [height](const TrayPicture& picture) { return picture.height == height; });
}

TEST(TrayPictures, TwoDigitsFillASquareInWholePixels) {
    const auto pictures = trayPictures(digits(celsius(72)), TrayPictureSet::square, ink);
    EXPECT_EQ(rows(withHeight(pictures, 16)),
              "................\n"
              "................\n"
              "................\n"
              ".######..######.\n"
              ".######..######.\n"
              ".....##......##.\n"
              ".....##......##.\n"
              ".....##..######.\n"
              ".....##..######.\n"
              ".....##..##.....\n"
              ".....##..##.....\n"
              ".....##..######.\n"
              ".....##..######.\n"
              "................\n"
              "................\n"
              "................\n");
}

TEST(TrayPictures, EverySquareHoldsTheLargestDigitsThatFit) {
    struct Expected {
        std::int32_t size;
        std::int64_t cell;
        std::int64_t left;
        std::int64_t top;
    };
    const auto check = [](const Display& display, const std::vector<Expected>& expectations) {
        const PixelBitmap bitmap = PixelRasterizer::digitsBitmap(display);
        const auto pictures = trayPictures(digits(display), TrayPictureSet::square, ink);
        ASSERT_EQ(pictures.size(), expectations.size());
        for (std::size_t i = 0; i < pictures.size(); ++i) {
            const auto& [size, cell, left, top] = expectations[i];
            EXPECT_EQ(pictures[i].width, size);
            EXPECT_EQ(rows(pictures[i]), enlarged(bitmap, cell, size, size, left, top)) << size;
        }
    };
    check(celsius(72),
          {{16, 2, 1, 3}, {20, 2, 3, 5}, {22, 3, 0, 3}, {24, 3, 1, 4}, {32, 4, 2, 6}, {44, 6, 0, 6}, {48, 6, 2, 8}});
    check(fahrenheit(161),
          {{16, 1, 2, 5}, {20, 1, 4, 7}, {22, 2, 0, 6}, {24, 2, 1, 7}, {32, 2, 4, 10}, {44, 4, 0, 12}, {48, 4, 2, 14}});
    Display dashes = fahrenheit(0);
    dashes.value.reset();
    check(dashes,
          {{16, 1, 2, 5}, {20, 1, 4, 7}, {22, 2, 0, 6}, {24, 2, 1, 7}, {32, 2, 4, 10}, {44, 4, 0, 12}, {48, 4, 2, 14}});
}

TEST(TrayPictures, OneDigitIsAsLargeAsTwo) {
    const PixelBitmap bitmap(3, 5, std::vector<Ink>(15, Ink::full));
    const auto pictures =
        trayPictures(trayArt({StatusImage{}, bitmap}, TrayShape::square), TrayPictureSet::square, ink);
    EXPECT_EQ(rows(withHeight(pictures, 22)), enlarged(bitmap, 3, 22, 22, 6, 3));
}

TEST(TrayPictures, AWideReadoutKeepsItsSizeAndIsPaddedToTheHeightOfThePanel) {
    const StatusImage art = readout(PixelStyle::arcade, PixelSize::compact);
    const auto pictures = trayPictures(art, TrayPictureSet::matePanel, ink);
    ASSERT_EQ(pictures.size(), 7U);
    EXPECT_EQ(rows(withHeight(pictures, 16)), enlarged(art.bitmap, 2, 46, 16, 0, 1));
    EXPECT_EQ(rows(withHeight(pictures, 22)), enlarged(art.bitmap, 2, 46, 22, 0, 4));
    EXPECT_EQ(rows(withHeight(pictures, 24)), enlarged(art.bitmap, 2, 46, 24, 0, 5));
    EXPECT_EQ(rows(withHeight(pictures, 26)), enlarged(art.bitmap, 2, 46, 26, 0, 6));
    EXPECT_EQ(rows(withHeight(pictures, 28)), enlarged(art.bitmap, 2, 46, 28, 0, 7));
    EXPECT_EQ(rows(withHeight(pictures, 32)), enlarged(art.bitmap, 4, 92, 32, 0, 2));
    EXPECT_EQ(rows(withHeight(pictures, 48)), enlarged(art.bitmap, 4, 92, 48, 0, 10));
}

TEST(TrayPictures, ALargeReadoutShrinksToTheCellsThatFit) {
    const StatusImage art = readout(PixelStyle::arcade, PixelSize::large, PixelPet::cat);
    const auto pictures = trayPictures(art, TrayPictureSet::matePanel, ink);
    EXPECT_EQ(rows(withHeight(pictures, 16)), enlarged(art.bitmap, 2, 66, 16, 0, 1));
    EXPECT_EQ(rows(withHeight(pictures, 22)), enlarged(art.bitmap, 3, 99, 22, 0, 0));
    EXPECT_EQ(rows(withHeight(pictures, 24)), enlarged(art.bitmap, 3, 99, 24, 0, 1));
    EXPECT_EQ(rows(withHeight(pictures, 32)), enlarged(art.bitmap, 4, 132, 32, 0, 2));
    EXPECT_EQ(rows(withHeight(pictures, 48)), enlarged(art.bitmap, 6, 198, 48, 0, 2));
}

TEST(TrayPictures, ABarScalesBetweenExactDoubles) {
    for (const auto style : {PixelStyle::arcade, PixelStyle::micro, PixelStyle::segment}) {
        for (const auto size : allCases<PixelSize>()) {
            const auto pictures = trayPictures(readout(style, size), TrayPictureSet::bar, ink);
            ASSERT_EQ(pictures.size(), 2U);
            const auto& [width, height, argb] = pictures[1];
            ASSERT_EQ(width, pictures[0].width * 2);
            ASSERT_EQ(height, pictures[0].height * 2);
            for (std::int32_t y = 0; y < height; ++y) {
                for (std::int32_t x = 0; x < width; ++x) {
                    const auto pixel = argb.begin() + 4 * (y * width + x);
                    const auto half = pictures[0].argb.begin() + 4 * (y / 2 * pictures[0].width + x / 2);
                    ASSERT_TRUE(std::equal(pixel, pixel + 4, half)) << x << ", " << y;
                }
            }
        }
    }
}

TEST(TrayPictures, UnlitSegmentsAreDimAndSolidOrWithoutGhostInkLeftOut) {
    const StatusImage art = readout(PixelStyle::segment, PixelSize::compact);
    std::string expected = enlarged(art.bitmap, 2, 38, 16, 0, 1);
    EXPECT_EQ(rows(trayPictures(art, TrayPictureSet::bar, ink)[0]), expected);
    EXPECT_NE(expected.find(':'), std::string::npos);
    std::replace(expected.begin(), expected.end(), ':', '.');
    EXPECT_EQ(rows(trayPictures(art, TrayPictureSet::bar, {ink.full, {}})[0]), expected);
}

TEST(TrayPictures, SquareCellsAreOpaque) {
    for (const auto style : {PixelStyle::arcade, PixelStyle::micro, PixelStyle::segment}) {
        for (const auto set : {TrayPictureSet::bar, TrayPictureSet::matePanel, TrayPictureSet::square}) {
            for (const auto& picture : trayPictures(readout(style, PixelSize::large, PixelPet::ghost), set, ink)) {
                EXPECT_EQ(rows(picture).find('?'), std::string::npos);
            }
        }
    }
}

TEST(TrayPictures, RoundDotsKeepTheirSmoothEdges) {
    const StatusImage art = readout(PixelStyle::dotMatrix, PixelSize::large);
    const auto pictures = trayPictures(art, TrayPictureSet::matePanel, ink);
    const TrayPicture& picture = withHeight(pictures, 24);
    ASSERT_EQ(picture.width, art.bitmap.width() * 3);

    StatusImage dot = art;
    dot.bitmap = PixelBitmap(1, 1, {Ink::full});
    const RgbaImage expected = rasterize(dot, 1);
    bool hasSoftEdge = false;
    for (std::int32_t y = 0; y < 21; ++y) {
        for (std::int32_t x = 0; x < picture.width; ++x) {
            const auto* pixel = &picture.argb[4 * static_cast<std::size_t>((y + 1) * picture.width + x)];
            const std::uint8_t coverage =
                art.bitmap.at(x / 3, y / 3) == Ink::full ? expected.at(x % 3, y % 3).alpha : std::uint8_t{0};
            ASSERT_EQ(pixel[0], coverage) << x << ", " << y;
            if (coverage > 0) {
                ASSERT_EQ((RgbaColor{pixel[1], pixel[2], pixel[3]}), ink.full);
            }
            hasSoftEdge = hasSoftEdge || (coverage > 0 && coverage < 255);
        }
    }
    EXPECT_TRUE(hasSoftEdge);
}

TEST(TrayPictures, SmallDotsArePointsAndNoHaze) {
    const StatusImage art = readout(PixelStyle::dotMatrix, PixelSize::compact);
    const auto pictures = trayPictures(art, TrayPictureSet::bar, {ink.full, {}});
    const TrayPicture& picture = withHeight(pictures, 16);
    ASSERT_EQ(picture.width, art.bitmap.width() * 2);
    for (std::int32_t y = 0; y < 14; ++y) {
        for (std::int32_t x = 0; x < picture.width; ++x) {
            const int alpha = picture.argb[4 * static_cast<std::size_t>((y + 1) * picture.width + x)];
            const bool isPoint = x % 2 == 0 && y % 2 == 0 && art.bitmap.at(x / 2, y / 2) == Ink::full;
            ASSERT_EQ(alpha > 190, isPoint) << x << ", " << y;
            ASSERT_EQ(alpha > 0, isPoint) << x << ", " << y;
        }
    }
}

TEST(TrayPictures, PixelsAreAlphaRedGreenBlue) {
    const PixelBitmap one(1, 1, {Ink::full});
    StatusImage art;
    art.bitmap = one;
    art.cell = 16;
    const auto pictures = trayPictures(art, TrayPictureSet::bar, ink);
    ASSERT_EQ(pictures[0].argb.size(), 4U * 16 * 16);
    EXPECT_EQ(std::vector<std::uint8_t>(pictures[0].argb.begin(), pictures[0].argb.begin() + 4),
              (std::vector<std::uint8_t>{255, 10, 20, 30}));
}

TEST(TrayPictures, AllPicturesOfASetHaveOneShapeAndFourBytesAPixel) {
    const StatusImage art = readout(PixelStyle::arcade, PixelSize::compact);
    for (const auto set :
         {TrayPictureSet::bar, TrayPictureSet::matePanel, TrayPictureSet::square, TrayPictureSet::xfcePanel}) {
        for (const auto& picture : trayPictures(art, set, ink)) {
            EXPECT_EQ(picture.width == picture.height, shape(set) == TrayShape::square);
            EXPECT_EQ(picture.argb.size(), 4U * static_cast<std::size_t>(picture.width * picture.height));
        }
    }
}

TEST(TrayPictures, AnEmptyBitmapIsTransparent) {
    for (const auto set : {TrayPictureSet::bar, TrayPictureSet::square}) {
        for (const auto& picture : trayPictures(StatusImage{}, set, ink)) {
            EXPECT_GT(picture.width, 0);
            EXPECT_EQ(std::count(picture.argb.begin(), picture.argb.end(), 0),
                      static_cast<std::ptrdiff_t>(picture.argb.size()));
        }
    }
}

TEST(TrayPictures, DigitsTooManyForASquareAreCutOffAtItsEdges) {
    const PixelBitmap bitmap(40, 5, std::vector<Ink>(200, Ink::full));
    const auto pictures =
        trayPictures(trayArt({StatusImage{}, bitmap}, TrayShape::square), TrayPictureSet::square, ink);
    EXPECT_EQ(pictures[0].width, 16);
    EXPECT_EQ(rows(pictures[0]).find('#'), 5U * 17);
}

TEST(TrayPictures, ArtIsTheReadoutOrTheDigitsWithoutWords) {
    StatusItemImage image;
    image.readout = readout(PixelStyle::dotMatrix, PixelSize::large);
    image.digits = PixelRasterizer::digitsBitmap(celsius(72));
    const StatusImage wide = trayArt(image, TrayShape::wide);
    EXPECT_EQ(wide.bitmap, image.readout.bitmap);
    EXPECT_TRUE(wide.isRound);
    EXPECT_EQ(wide.description, std::nullopt);
    const StatusImage square = trayArt(image, TrayShape::square);
    EXPECT_EQ(square.bitmap, image.digits);
    EXPECT_FALSE(square.isRound);
}

}  // namespace
}  // namespace thermopix
