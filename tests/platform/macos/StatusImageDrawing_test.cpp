#include "platform/macos/drawing/StatusImageDrawing.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "pixels/StatusImageRenderer.h"

namespace thermopix {
namespace {

class RecordingCanvas final : public StatusImageCanvas {
public:
    void setAntialiasing(bool antialiases) override { calls.emplace_back(antialiases ? "smooth" : "hard"); }
    void fillRectangle(const Frame& frame, double opacity) override { record("square", frame, opacity); }
    void fillOval(const Frame& frame, double opacity) override { record("dot", frame, opacity); }

    std::vector<std::string> calls;

private:
    void record(std::string_view shape, const Frame& frame, double opacity) {
        calls.push_back(
            fmt::format("{} {},{} {}x{} at {}", shape, frame.x, frame.y, frame.width, frame.height, opacity));
    }
};

PixelBitmap bitmap(const std::vector<std::string>& rows) {
    std::vector<Ink> cells;
    for (const auto& row : rows) {
        for (const char character : row) {
            cells.push_back(inkFromArt(character));
        }
    }
    return {static_cast<std::int64_t>(rows.front().size()), static_cast<std::int64_t>(rows.size()), cells};
}

std::vector<std::string> drawn(const StatusImage& image) {
    RecordingCanvas canvas;
    drawStatusImage(image, canvas);
    return canvas.calls;
}

TEST(StatusImageDrawingTest, SquaresFillTheirCellsFromTheTopLeftWithHardEdges) {
    const auto image = StatusImageRenderer::image(bitmap({"#.",  //
                                                          ".#"}),
                                                  PixelStyle::arcade, PixelSize::compact);
    EXPECT_EQ(drawn(image), (std::vector<std::string>{"hard", "square 0,0 2x2 at 1", "square 2,2 2x2 at 1"}));
}

TEST(StatusImageDrawingTest, GhostInkIsDrawnAtTwelvePercent) {
    const auto image = StatusImageRenderer::image(bitmap({":#"}), PixelStyle::segment, PixelSize::large);
    EXPECT_EQ(drawn(image), (std::vector<std::string>{"hard", "square 0,0 3x3 at 0.12", "square 3,0 3x3 at 1"}));
}

TEST(StatusImageDrawingTest, DotsStandInsideTheirCellsAndAreSmooth) {
    const auto compact = StatusImageRenderer::image(bitmap({"#"}), PixelStyle::dotMatrix, PixelSize::compact);
    EXPECT_EQ(drawn(compact), (std::vector<std::string>{"smooth", "dot 0.5,0.5 1x1 at 1"}));
    const auto large = StatusImageRenderer::image(bitmap({".#"}), PixelStyle::dotMatrix, PixelSize::large);
    EXPECT_EQ(drawn(large), (std::vector<std::string>{"smooth", "dot 3.75,0.75 1.5x1.5 at 1"}));
}

TEST(StatusImageDrawingTest, TheBlankPictureDrawsNothing) {
    EXPECT_EQ(drawn(StatusImage{}), (std::vector<std::string>{"hard"}));
}

}  // namespace
}  // namespace thermopix
