#include "shell/ViewLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "settings/ViewBuilding.h"

namespace thermopix {
namespace {

using namespace Views;

// Every character is 5 points wide and every line 10 high; controls are 40 × 20.
constexpr auto measure = [](const ViewNode& leaf, double width) -> Size {
    if (leaf.kind == ViewKind::text) {
        const auto natural = 5.0 * static_cast<double>(leaf.text.size());
        const double lines = leaf.wraps ? std::max(1.0, std::ceil(natural / std::max(width, 5.0))) : 1;
        return {std::min(natural, leaf.wraps ? width : natural), 10 * lines};
    }
    return {40, 20};
};

PlacedNode place(const ViewNode& root, double width = 200, double height = 100) {
    return layOut(root, {width, height}, measure);
}

ViewNode word(const std::string& text) {
    return Views::text(text, 10);
}

ViewNode paragraph(const std::string& text) {
    ViewNode node = word(text);
    node.wraps = true;
    return node;
}

std::vector<Frame> childFrames(const PlacedNode& placed) {
    std::vector<Frame> frames;
    for (const auto& child : placed.children) {
        frames.push_back(child.frame);
    }
    return frames;
}

TEST(ViewLayout, StacksChildrenDownwardsWithSpacing) {
    const auto root = vertical(4, {word("ab"), word("abcd")});
    EXPECT_EQ(childFrames(place(root)), (std::vector<Frame>{{0, 0, 10, 10}, {0, 14, 20, 10}}));
}

TEST(ViewLayout, StacksChildrenSidewaysCentredOnTheAxis) {
    auto tall = word("ab");
    tall.height = 30;
    const auto root = horizontal(6, {tall, word("abcd")});
    EXPECT_EQ(childFrames(place(root, 200, 30)), (std::vector<Frame>{{0, 0, 10, 30}, {16, 10, 20, 10}}));
}

TEST(ViewLayout, KeepsPaddingFree) {
    auto root = vertical(0, {word("ab")});
    root.padding = {.top = 1, .leading = 2, .bottom = 3, .trailing = 4};
    EXPECT_EQ(childFrames(place(root)), (std::vector<Frame>{{2, 1, 10, 10}}));
    const auto outer = vertical(0, {root, word("x")});
    EXPECT_EQ(childFrames(place(outer)), (std::vector<Frame>{{0, 0, 16, 14}, {0, 14, 5, 10}}));
}

TEST(ViewLayout, WrapsTextInTheWidthThatIsLeft) {
    const auto root = horizontal(10, {word("abcd"), paragraph(std::string(20, 'x'))});
    const auto outer = vertical(0, {root});
    const auto placed = place(outer, 80);
    EXPECT_EQ(placed.children[0].frame.height, 20);
    EXPECT_EQ(childFrames(placed.children[0]), (std::vector<Frame>{{0, 5, 20, 10}, {30, 0, 50, 20}}));
}

TEST(ViewLayout, SharesWhatIsLeftEqually) {
    auto left = word("a");
    left.fillsWidth = true;
    auto right = word("b");
    right.fillsWidth = true;
    EXPECT_EQ(childFrames(place(horizontal(10, {left, right}), 110, 10)),
              (std::vector<Frame>{{0, 0, 50, 10}, {60, 0, 50, 10}}));
}

TEST(ViewLayout, LetsASpacerPushTheRestToTheEnd) {
    EXPECT_EQ(childFrames(place(vertical(0, {word("a"), spacer(), word("b")}))),
              (std::vector<Frame>{{0, 0, 5, 10}, {0, 10, 0, 80}, {0, 90, 5, 10}}));
    EXPECT_EQ(childFrames(place(horizontal(0, {spacer(), word("ab"), spacer()}), 50, 10)),
              (std::vector<Frame>{{0, 5, 20, 0}, {20, 0, 10, 10}, {30, 5, 20, 0}}));
}

TEST(ViewLayout, GivesAColumnWithASpacerAllTheHeight) {
    const auto column = vertical(0, {word("a"), spacer(), word("b")});
    const auto placed = place(horizontal(0, {column, vertical(0, {word("c")})}));
    EXPECT_EQ(placed.children[0].frame.height, 100);
    EXPECT_EQ(placed.children[1].frame.height, 10);
    EXPECT_EQ(childFrames(placed.children[0]), (std::vector<Frame>{{0, 0, 5, 10}, {0, 10, 0, 80}, {0, 90, 5, 10}}));
}

TEST(ViewLayout, StretchesADividerAcrossItsStack) {
    EXPECT_EQ(childFrames(place(vertical(0, {divider()}))), (std::vector<Frame>{{0, 0, 200, 1}}));
    EXPECT_EQ(childFrames(place(horizontal(0, {divider()}))), (std::vector<Frame>{{0, 0, 1, 100}}));
}

TEST(ViewLayout, HonoursFixedAndLeastSizes) {
    auto fixed = word("a");
    fixed.width = 60;
    fixed.height = 25;
    auto least = word("b");
    least.minHeight = 28;
    EXPECT_EQ(childFrames(place(vertical(0, {fixed, least}))), (std::vector<Frame>{{0, 0, 60, 25}, {0, 25, 5, 28}}));
}

TEST(ViewLayout, GivesPixelArtItsOwnSize) {
    StatusImage image;
    image.bitmap = PixelBitmap::blank(23, 7);
    image.cell = 2;
    const auto root = vertical(0, {pixelImage(image, RoleColor{})});
    EXPECT_EQ(childFrames(place(root)), (std::vector<Frame>{{0, 0, 46, 14}}));
}

TEST(ViewLayout, LaysAPlainButtonOutLikeAStackAndAPushButtonLikeALeaf) {
    auto plain = horizontal(0, {word("ab"), word("cd")});
    plain.kind = ViewKind::button;
    const auto placed = place(vertical(0, {plain, pushButton("Go", "go")}));
    EXPECT_EQ(childFrames(placed), (std::vector<Frame>{{0, 0, 20, 10}, {0, 10, 40, 20}}));
    EXPECT_EQ(placed.children[0].children.size(), 2U);
}

TEST(ViewLayout, LetsAScrolledColumnGrowBeyondItsWindow) {
    ViewNode scroll;
    scroll.kind = ViewKind::scroll;
    auto column = vertical(0, std::vector<ViewNode>(15, word("line")));
    column.fillsWidth = true;
    scroll.children.push_back(column);
    auto side = word("side");
    side.width = 50;
    auto root = horizontal(0, {side, scroll});
    root.alignment = Alignment::leading;
    const auto placed = place(root);
    EXPECT_EQ(placed.children[1].frame, (Frame{50, 0, 150, 100}));
    EXPECT_EQ(placed.children[1].children[0].frame, (Frame{0, 0, 150, 150}));
}

TEST(ViewLayout, RoundsWhatTheShellMeasuresUpToWholePoints) {
    const auto placed = layOut(vertical(0, {word("a"), word("b")}), {100, 100}, [](const ViewNode&, double) {
        return Size{7.2, 9.1};
    });
    EXPECT_EQ(childFrames(placed), (std::vector<Frame>{{0, 0, 8, 10}, {0, 10, 8, 10}}));
}

}  // namespace
}  // namespace thermopix
