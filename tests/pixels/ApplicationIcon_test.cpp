#include "pixels/ApplicationIcon.h"

#include <gtest/gtest.h>

#include <string>

namespace thermopix {
namespace {

// What the icon shows where the cat is, one character a cell: the cat is warm, the tile is not.
std::string face(const RgbaImage& icon, std::int64_t cell) {
    constexpr std::int64_t columns = 8;
    constexpr std::int64_t rows = 7;
    const std::int64_t left = (icon.width - columns * cell) / 2;
    const std::int64_t top = (icon.height - rows * cell) / 2;
    std::string art;
    for (std::int64_t row = 0; row < rows; ++row) {
        for (std::int64_t column = 0; column < columns; ++column) {
            const RgbaColor& pixel = icon.at(left + column * cell + cell / 2, top + row * cell + cell / 2);
            art += pixel.red > 200 && pixel.red > pixel.blue ? '#' : '.';
        }
        art += '\n';
    }
    return art;
}

constexpr const char* contentCat =
    "##....##\n"
    "########\n"
    "##.##.##\n"
    "########\n"
    "###..###\n"
    "########\n"
    ".######.\n";

TEST(ApplicationIcon, ShowsTheCatInWholeCellsAtEverySize) {
    EXPECT_EQ(face(applicationIcon(16), 1), contentCat);
    EXPECT_EQ(face(applicationIcon(48), 4), contentCat);
    EXPECT_EQ(face(applicationIcon(512), 43), contentCat);
    EXPECT_EQ(face(applicationIcon(1024), 85), contentCat);
}

TEST(ApplicationIcon, IsASquareTileWithRoundCorners) {
    for (const auto side : applicationIconSides) {
        const RgbaImage icon = applicationIcon(side);
        EXPECT_EQ(icon.width, side);
        EXPECT_EQ(icon.height, side);
        EXPECT_EQ(icon.at(0, 0).alpha, 0) << side;
        EXPECT_EQ(icon.at(side - 1, side - 1).alpha, 0) << side;
        EXPECT_EQ(icon.at(side / 2, side / 2).alpha, 255) << side;
    }
}

TEST(ApplicationIcon, IsTheSameOnItsLeftAndRight) {
    const RgbaImage icon = applicationIcon(64);
    for (std::int64_t y = 0; y < 64; ++y) {
        for (std::int64_t x = 0; x < 32; ++x) {
            EXPECT_EQ(icon.at(x, y).alpha, icon.at(63 - x, y).alpha);
        }
    }
}

TEST(ApplicationIcon, HasACellOfTheVectorPictureForEveryInkedCell) {
    const std::string svg = applicationIconSvg();
    std::size_t cells = 0;
    for (std::size_t at = svg.find('M'); at != std::string::npos; at = svg.find('M', at + 1)) {
        ++cells;
    }
    EXPECT_EQ(cells, 46U);
    EXPECT_NE(svg.find("viewBox=\"0 0 128 128\""), std::string::npos);
}

TEST(ApplicationIconDeathTest, RefusesASizeInWhichTheCatHasNoRoom) {
    EXPECT_DEATH((void)applicationIcon(15), "at least 16");
}

}  // namespace
}  // namespace thermopix
