#include "pixels/PixelStyle.h"

#include <gtest/gtest.h>

#include <vector>

namespace thermopix {
namespace {

TEST(PixelStyle, IsOfferedInDeclarationOrder) {
    const auto order = pixelStyleDisplayOrder();
    EXPECT_EQ(std::vector(order.begin(), order.end()),
              (std::vector{PixelStyle::arcade, PixelStyle::micro, PixelStyle::segment, PixelStyle::dotMatrix}));
}

TEST(PixelStyle, SetsTheReadoutInItsFont) {
    EXPECT_EQ(&font(PixelStyle::arcade), &PixelFont::arcade5x7());
    EXPECT_EQ(&font(PixelStyle::micro), &PixelFont::micro3x5());
    EXPECT_EQ(&font(PixelStyle::segment), &PixelFont::segment4x7());
    EXPECT_EQ(&font(PixelStyle::dotMatrix), &PixelFont::arcade5x7());
}

TEST(PixelStyle, DrawsDotsOnlyForDotMatrix) {
    for (const PixelStyle style : allCases<PixelStyle>()) {
        const bool isDots = style == PixelStyle::dotMatrix;
        EXPECT_EQ(isRound(style), isDots);
        EXPECT_EQ(dotInset(style, PixelSize::compact), isDots ? 0.5 : 0.0);
        EXPECT_EQ(dotInset(style, PixelSize::large), isDots ? 0.75 : 0.0);
        EXPECT_EQ(tracking(style), 1);
    }
}

TEST(PixelStyle, HasARenderedHeightThatAPetCanRaise) {
    EXPECT_EQ(renderedHeight(PixelStyle::arcade, PixelSize::compact, PixelPet::none), 14.0);
    EXPECT_EQ(renderedHeight(PixelStyle::dotMatrix, PixelSize::large, PixelPet::ghost), 21.0);
    EXPECT_EQ(renderedHeight(PixelStyle::micro, PixelSize::compact, PixelPet::none), 10.0);
    EXPECT_EQ(renderedHeight(PixelStyle::micro, PixelSize::compact, PixelPet::mac), 14.0);
    EXPECT_EQ(renderedHeight(PixelStyle::micro, PixelSize::large, PixelPet::none), 15.0);
    EXPECT_EQ(renderedHeight(PixelStyle::micro, PixelSize::large, PixelPet::cat), 21.0);
}

TEST(PixelStyle, FitsTheMenuBarInEverySizeWithEveryPet) {
    EXPECT_EQ(menuBarThickness, 22.0);
    for (const PixelStyle style : allCases<PixelStyle>()) {
        for (const PixelSize size : allCases<PixelSize>()) {
            for (const PixelPet pet : allCases<PixelPet>()) {
                EXPECT_LE(renderedHeight(style, size, pet), menuBarThickness);
            }
        }
    }
}

TEST(PixelSize, IsAWholeNumberOfPointsPerCell) {
    EXPECT_EQ(cell(PixelSize::compact), 2.0);
    EXPECT_EQ(cell(PixelSize::large), 3.0);
    EXPECT_EQ(title(PixelSize::compact), "Compact");
    EXPECT_EQ(title(PixelSize::large), "Large");
}

}  // namespace
}  // namespace thermopix
