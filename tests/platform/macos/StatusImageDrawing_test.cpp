#include "platform/macos/drawing/StatusImageDrawing.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "pixels/StatusImageRenderer.h"

namespace thermopix {
namespace {

PixelBitmap bitmap(const std::vector<std::string>& rows) {
    std::vector<Ink> cells;
    for (const auto& row : rows) {
        for (const char character : row) {
            cells.push_back(inkFromArt(character));
        }
    }
    return {static_cast<std::int64_t>(rows.front().size()), static_cast<std::int64_t>(rows.size()), cells};
}

/// Each cell that is filled, as x,y width x height and its opacity.
std::vector<std::string> filled(const StatusImage& image) {
    std::vector<std::string> cells;
    fillCells(image, [&](const Frame& cell, double opacity) {
        cells.push_back(fmt::format("{},{} {}x{} at {}", cell.x, cell.y, cell.width, cell.height, opacity));
    });
    return cells;
}

TEST(StatusImageDrawingTest, InkedCellsAreFilledInPlace) {
    const struct {
        std::string_view what;
        StatusImage image;
        std::vector<std::string> cells;
    } cases[]{
        {"squares, from the top left",
         StatusImageRenderer::image(bitmap({"#.",  //
                                            ".#"}),
                                    PixelStyle::arcade, PixelSize::compact),
         {"0,0 2x2 at 1", "2,2 2x2 at 1"}},
        {"ghost ink at twelve percent",
         StatusImageRenderer::image(bitmap({":#"}), PixelStyle::segment, PixelSize::large),
         {"0,0 3x3 at 0.12", "3,0 3x3 at 1"}},
        {"a dot stands inside its cell",
         StatusImageRenderer::image(bitmap({"#"}), PixelStyle::dotMatrix, PixelSize::compact),
         {"0.5,0.5 1x1 at 1"}},
        {"a large dot, too",
         StatusImageRenderer::image(bitmap({".#"}), PixelStyle::dotMatrix, PixelSize::large),
         {"3.75,0.75 1.5x1.5 at 1"}},
        {"nothing of the blank picture", StatusImage{}, {}},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(filled(each.image), each.cells) << each.what;
    }
}

}  // namespace
}  // namespace thermopix
