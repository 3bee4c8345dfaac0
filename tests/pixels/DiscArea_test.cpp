#include "pixels/DiscArea.h"

#include <gtest/gtest.h>

#include <cmath>

namespace thermopix {
namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double tolerance = 1e-12;

TEST(DiscArea, IsThatOfTheRectangleInsideTheDiscAndNothingOutside) {
    EXPECT_NEAR(discArea(10, -1, -2, 3, 4), 24, tolerance);
    EXPECT_NEAR(discArea(10, 8, 8, 9, 9), 0, tolerance);
    EXPECT_NEAR(discArea(10, 10, -5, 11, 5), 0, tolerance);
    EXPECT_NEAR(discArea(10, -20, -20, -15, 20), 0, tolerance);
}

TEST(DiscArea, IsThatOfTheDiscInsideTheRectangle) {
    EXPECT_NEAR(discArea(1.5, -2, -2, 2, 2), pi * 2.25, tolerance);
    EXPECT_NEAR(discArea(1.5, 0, 0, 2, 2), pi * 2.25 / 4, tolerance);
    EXPECT_NEAR(discArea(1.5, -2, 0, 2, 2), pi * 2.25 / 2, tolerance);
}

TEST(DiscArea, IsTheSegmentThatALineCutsOff) {
    // The cap beyond half the radius.
    const double cap = pi / 3 - std::sqrt(3.0) / 4;
    EXPECT_NEAR(discArea(1, 0.5, -1, 1, 1), cap, tolerance);
    EXPECT_NEAR(discArea(1, -1, -1, -0.5, 1), cap, tolerance);
    EXPECT_NEAR(discArea(1, -1, 0.5, 1, 1), cap, tolerance);
    EXPECT_NEAR(discArea(1, -1, -5, 1, -0.5), cap, tolerance);
}

TEST(DiscArea, OfThePixelsOfAGridAddsUpToTheDisc) {
    for (const double radius : {0.5, 1.0, 1.5, 2.25, 7.75}) {
        double sum = 0;
        for (int y = -8; y < 8; ++y) {
            for (int x = -8; x < 8; ++x) {
                const double area = discArea(radius, x, y, x + 1, y + 1);
                EXPECT_GE(area, -tolerance);
                EXPECT_LE(area, 1 + tolerance);
                EXPECT_NEAR(area, discArea(radius, y, -x - 1, y + 1, -x), tolerance) << "a quarter turn";
                sum += area;
            }
        }
        EXPECT_NEAR(sum, pi * radius * radius, 1e-10);
    }
}

TEST(DiscArea, AgreesWithCountingPointsInAPixelOnTheRim) {
    constexpr int steps = 2000;
    int inside = 0;
    for (int y = 0; y < steps; ++y) {
        for (int x = 0; x < steps; ++x) {
            const double px = 1 + (x + 0.5) / steps;
            const double py = 1 + (y + 0.5) / steps;
            inside += px * px + py * py < 2.25 * 2.25 ? 1 : 0;
        }
    }
    EXPECT_NEAR(discArea(2.25, 1, 1, 2, 2), static_cast<double>(inside) / steps / steps, 1e-4);
}

}  // namespace
}  // namespace thermopix
